#pragma once

#include "agent/speech/speech_engine.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace voxtrel::agent::speech {

// Where an output fetches what it plays.
class SampleSource {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~SampleSource() = default;

    // Fills out with what is to be played, silence where there is nothing. The first sample will be heard at
    // the moment heardAt. Returns how many samples were not silence of this kind. Never waits for long.
    virtual std::size_t Pull(std::span<std::int16_t> out, TimePoint heardAt) = 0;
};

// Stands between the making of an utterance and its playing: keeps samples until an output fetches them, and
// events until their sample has been heard. Threads: the user interface begins, stops and takes events; a
// worker adds samples and events; an output pulls. The lock is held for copying only.
class Playback : public SampleSource {
public:
    using Utterance = std::uint64_t;

    // Drops what is left of the utterance before and begins one.
    Utterance Begin();

    // What is left fades out within a few milliseconds, and no event of it will be due.
    void Stop();

    bool Active() const;
    std::vector<SpeechEvent> TakeDue(TimePoint now);

    // For the worker. They do nothing once the utterance is not the current one any more, and return whether
    // it still is.
    bool IsCurrent(Utterance utterance) const;
    bool AddSamples(Utterance utterance, std::span<const std::int16_t> samples);
    void AddEvent(Utterance utterance, std::int64_t sample, SpeechEvent event);
    // Waits until little enough is left to be played.
    bool WaitForRoom(Utterance utterance);
    // Lets whoever waits for room go, for good.
    void Close();

    // Mixes a sound into what is played from now on, whether something is spoken or not.
    void AddSound(std::span<const std::int16_t> samples);
    // Sounds fade out within a few milliseconds.
    void StopSounds();

    std::size_t Pull(std::span<std::int16_t> out, TimePoint heardAt) override;

    // Whether samples wait to be played.
    bool HasSamples() const;
    bool HasDue(TimePoint now) const;
    // When the next event will be due; nothing while its sample has not been handed to the output.
    std::optional<TimePoint> NextDue() const;
    TimePoint LastPull() const;

    // From the first call on, what is played is also kept for the next call.
    std::vector<std::int16_t> TakePlayed();

private:
    struct TimedEvent {
        std::int64_t sample = 0;
        SpeechEvent event;
    };
    // A stretch of samples handed to the output, and when its first one is heard.
    struct Stretch {
        std::int64_t begin = 0;
        std::int64_t end = 0;
        TimePoint heardAt;
    };

    void Drop();
    std::size_t MixSounds(std::span<std::int16_t> out);
    std::int64_t HeardUntil(TimePoint now) const;
    bool IsDue(const TimedEvent& event, std::int64_t heard) const;

    mutable std::mutex mutex_;
    std::condition_variable roomMade_;
    Utterance current_ = 0;
    bool active_ = false;
    bool closed_ = false;

    std::deque<std::int16_t> fading_;  // of a stopped utterance, played before anything else
    std::deque<std::int16_t> samples_; // of the current one
    std::deque<std::int16_t> sounds_;  // mixed already
    std::deque<TimedEvent> events_;
    std::int64_t made_ = 0;   // samples added to the current utterance
    std::int64_t played_ = 0; // samples of it handed to the output
    std::deque<Stretch> stretches_;
    TimePoint lastPull_;

    bool recording_ = false;
    std::vector<std::int16_t> recorded_;
};

} // namespace voxtrel::agent::speech
