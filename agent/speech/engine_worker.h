#pragma once

#include "agent/speech/phrase_timeline.h"
#include "agent/speech/voice_engine.h"

#include <chrono>
#include <functional>
#include <memory>

namespace voxtrel::agent::speech {

// A phrase as an engine has spoken it, at the engine's own rate.
struct SpokenPhrase {
    enum class Outcome {
        Complete,
        Failed,   // what came before is there
        Unwanted, // nobody waits for it any more
    };
    Outcome outcome = Outcome::Failed;
    int sampleRate = 0; // 0: the engine has not begun
    std::vector<std::int16_t> samples = {};
    std::vector<ReportedWord> words = {};
    std::vector<Phoneme> mouths = {};
};

// Calls an engine on a thread of its own, so that a call that does not come back costs that thread and no
// more: the thread is left to itself with the engine, and the next phrase gets another.
class EngineWorker {
public:
    // How long an engine may be silent before it counts as hung.
    struct Patience {
        std::chrono::milliseconds first{
            4000}; // until something comes of the first phrase: it may have to load
        std::chrono::milliseconds later{2000};
    };

    explicit EngineWorker(std::function<std::unique_ptr<VoiceEngine>()> make);
    EngineWorker(std::function<std::unique_ptr<VoiceEngine>()> make, Patience patience);
    ~EngineWorker();
    EngineWorker(const EngineWorker&) = delete;
    EngineWorker& operator=(const EngineWorker&) = delete;

    // Returns when the phrase is spoken, has failed, or is not wanted any more; wanted is asked from time to
    // time. An engine that has hung twice is not called again.
    SpokenPhrase Speak(const SystemVoice& voice, const Phrase& phrase, const std::function<bool()>& wanted);

private:
    struct Task;
    struct Desk;

    bool FreeDesk(const std::function<bool()>& wanted);
    void Abandon();

    std::function<std::unique_ptr<VoiceEngine>()> make_;
    Patience patience_;
    std::shared_ptr<Desk> desk_; // of the thread in use; shared with it
    int hung_ = 0;
};

} // namespace voxtrel::agent::speech
