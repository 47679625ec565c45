#pragma once

#include "agent/acs/character_file.h"
#include "agent/speech/prosody.h"
#include "agent/speech/text_normalizer.h"
#include "agent/speech/voices.h"

#include <cstdint>
#include <span>
#include <vector>

namespace voxtrel::agent::speech {

// Every voice comes at this rate, one channel of 16 bits.
inline constexpr int kSampleRate = 16000;

constexpr std::int64_t SamplesOf(double milliseconds)
{
    return static_cast<std::int64_t>(milliseconds * kSampleRate / 1000 + 0.5);
}

struct Phoneme {
    std::int64_t start = 0; // sample
    acs::Mouth mouth = acs::Mouth::Closed;
    bool silent = false;
};

// Where things are in the samples of one synthesis.
struct SpeechTiming {
    std::vector<std::int64_t> tokenStarts; // sample at which each token begins to sound, in order
    std::vector<Phoneme> phonemes;
    std::int64_t speechStart = 0; // the first sound, after leading silence
    std::int64_t speechEnd = 0;   // the end of the last sound, before trailing silence
};

// Takes what a synthesizer makes, as it is made.
class SpeechSink {
public:
    virtual ~SpeechSink() = default;

    // Comes once, before the first samples; not at all if there is nothing to hear. False stops the
    // synthesis.
    virtual bool Timing(const SpeechTiming& timing) = 0;
    virtual bool Samples(std::span<const std::int16_t> samples) = 0;

    // Whether anything is still wanted: for those who have to wait before they have something to give.
    virtual bool Wanted() const { return true; }
};

// Turns words into sound.
class Synthesizer {
public:
    virtual ~Synthesizer() = default;

    // Loads what this voice needs, so that the first Speak does not have to.
    virtual void Prepare(const Voice& voice) = 0;

    // The next Speak begins another utterance.
    virtual void BeginUtterance() {}

    // Speaks the tokens as one phrase; returns when all is made or the sink has had enough. The volume is not
    // applied.
    virtual void Speak(std::span<const SpokenToken> tokens, const Voice& voice, const Prosody& prosody,
                       SpeechSink& sink) = 0;
};

} // namespace voxtrel::agent::speech
