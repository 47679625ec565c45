#pragma once

#include "agent/speech/synthesizer.h"

namespace voxtrel::agent::speech {

// The voices that are built into the program. Any number of objects may be used from any threads: they take
// turns, since the library under them keeps global state.
class FliteSynthesizer : public Synthesizer {
public:
    void Prepare(const Voice& voice) override;
    void Speak(std::span<const SpokenToken> tokens, const Voice& voice, const Prosody& prosody,
               SpeechSink& sink) override;
};

} // namespace voxtrel::agent::speech
