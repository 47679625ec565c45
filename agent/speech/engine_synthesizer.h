#pragma once

#include "agent/speech/engine_worker.h"
#include "agent/speech/synthesizer.h"

#include <map>
#include <memory>

namespace voxtrel::agent::speech {

// The phrase that these tokens, as written, are.
Phrase MakePhrase(std::span<const SpokenToken> tokens, const Prosody& prosody);

// Lets each voice be spoken by what can speak it: the built-in synthesizer or an engine of the system. Where
// an engine fails, a built-in voice says the word that was being said, the rest of the phrase and the rest of
// the utterance.
class EngineSynthesizer : public Synthesizer {
public:
    explicit EngineSynthesizer(std::unique_ptr<Synthesizer> builtIn, EngineWorker::Patience patience = {});

    void Prepare(const Voice& voice) override;
    void BeginUtterance() override { failed_ = false; }
    void Speak(std::span<const SpokenToken> tokens, const Voice& voice, const Prosody& prosody,
               SpeechSink& sink) override;

private:
    class StandInSink;

    // A phrase at our rate.
    struct Rendition {
        SpeechTiming timing;
        std::vector<std::int16_t> samples;
    };

    EngineWorker& WorkerOf(const VoiceFamily& family);
    static Rendition Render(const Phrase& phrase, const SpokenPhrase& spoken, const Voice& voice);
    static std::size_t CutAtLastWord(SpokenPhrase& spoken, std::size_t words);
    void StandIn(std::span<const SpokenToken> tokens, const Voice& voice, const Prosody& prosody,
                 Rendition before, SpeechSink& sink);

    std::unique_ptr<Synthesizer> builtIn_;
    EngineWorker::Patience patience_;
    std::map<const VoiceFamily*, std::unique_ptr<EngineWorker>> workers_;
    bool failed_ = false; // the engine, in this utterance
};

} // namespace voxtrel::agent::speech
