#pragma once

#include "agent/speech/clause_cutter.h"
#include "agent/speech/phrase_timeline.h"
#include "agent/speech/speech_engine.h"
#include "agent/speech/voice_engine.h"

#include <chrono>
#include <deque>

namespace voxtrel::agent::speech {

// Takes the events of an utterance that is played elsewhere, each at its moment.
class PlayedSink {
public:
    virtual ~PlayedSink() = default;
    virtual void Event(SpeechEvent event) = 0;
    virtual bool Wanted() const = 0;
};

// Lets an engine that plays by itself say an utterance, sentence by sentence, the next one waiting in its
// queue while one is heard. Its word events carry bookmarks, the balloon and the mouth along; from an engine
// that has none the pace is guessed, and the guess mended after each sentence.
class PlayedUtterance {
public:
    enum class Outcome {
        Complete, // the End event has been given
        Stopped,  // nobody wanted more; the engine is silent
        Broken,   // the engine has failed: TakeRest has what is left to be said
    };

    // All but the cutter must outlive the object.
    PlayedUtterance(ClauseCutter clauses, const Voice& voice, VoicePlayer& player, PlayedSink& sink);

    // Returns when the utterance has been heard.
    Outcome Run();

    // What was not said, the word that was being said included; bookmarks that were given do not come again.
    ClauseCutter TakeRest();

private:
    using Clock = std::chrono::steady_clock;

    struct Item {
        Clause clause = {};
        Phrase phrase = {};
        std::uint32_t number = 0;
        bool queued = false;
        bool begun = false;
        bool marked = false;       // the engine tells of words
        std::size_t reached = 0;   // words that have begun, as far as is known
        std::size_t cuesGiven = 0; // of clause
        Clock::time_point begunAt = {};
        Clock::time_point wordAt = {}; // of the word reached last
    };

    void Refill();
    bool QueueDue();
    bool Take(const PlayerEvent& event);
    void BeginItem(Item& item);
    void ReachWord(Item& item, std::size_t word);
    void Guess(Item& item);
    void MoveMouth(const Item& item);
    void FinishFront();
    void GiveCues(Item& item, std::size_t upToToken);
    void GiveMouth(acs::Mouth mouth);
    bool Overdue() const;
    void Rest(int ms);
    std::chrono::milliseconds TimeOf(const Item& item, std::size_t words) const;

    ClauseCutter cutter_;
    const Voice& voice_;
    VoicePlayer& player_;
    PlayedSink& sink_;

    std::deque<Item> items_; // the first one is heard
    bool allRead_ = false;
    std::uint32_t lastNumber_ = 0;
    Clock::time_point lastSign_;
    double msPerLetter_ = 65;     // at the usual speed
    std::vector<Phoneme> mouths_; // of the word reached last, in milliseconds since its start
    std::size_t nextMouth_ = 0;
    acs::Mouth mouth_ = acs::Mouth::Closed;
    Clock::time_point mouthAt_;
};

} // namespace voxtrel::agent::speech
