#pragma once

#include "agent/speech/audio_output.h"
#include "agent/speech/clause_cutter.h"
#include "agent/speech/engine_synthesizer.h"
#include "agent/speech/playback.h"
#include "agent/speech/speech_factory.h"
#include "agent/speech/synthesizer.h"
#include "agent/speech/voice_catalogue.h"
#include "agent/speech/wav_writer.h"

#include <atomic>
#include <condition_variable>
#include <fstream>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace voxtrel::agent::speech {

// Speaks with the built-in voices and those of the system. Two threads of its own: one makes the sound, a
// clause ahead of what is heard, or sees to an engine that plays by itself; the other sees to the output:
// opens the device while the first clause is made, plays in silence when there is none, closes it after a
// while, and writes the recording. Both sleep while nothing is spoken.
class EmbeddedEngine : public SpeechEngine, private SoundPlayer {
public:
    // Makes the sound device; none for silence.
    using OutputMaker = std::function<std::unique_ptr<AudioOutput>(SampleSource&)>;

    // synthesizer: of the built-in voices.
    EmbeddedEngine(SpeechEngineOptions options, std::unique_ptr<Synthesizer> synthesizer,
                   const OutputMaker& makeOutput);
    ~EmbeddedEngine() override;

    Result SetMode(std::wstring_view modeId) override;
    std::wstring Mode() const override;
    void Start(std::wstring markup) override;
    void Stop() override;
    bool Speaking() const override;
    std::vector<SpeechEvent> TakeDueEvents() override;
    std::optional<std::chrono::nanoseconds> UntilNextEvent() const override;
    SoundPlayer* Sounds() override { return this; }

private:
    using TimePoint = SampleSource::TimePoint;

    struct Job {
        Playback::Utterance utterance = 0;
        std::wstring markup = {};
        ClauseCutter::Bookmarks bookmarks = ClauseCutter::Bookmarks::Report;
        const Voice* voice = nullptr;
    };

    std::chrono::milliseconds StartSound(std::span<const std::uint8_t> wave) override;
    void StopSounds() override { playback_.StopSounds(); }

    const Voice* Find(std::wstring_view modeId, std::chrono::milliseconds limit) const;

    void MakeSound();
    void Perform(const Job& job);
    void Render(ClauseCutter clauses, const Job& job, const Voice& voice);
    bool Play(ClauseCutter& clauses, const Job& job, const Voice& voice);

    void OpenOutputSoon();
    void TendOutput();
    void WaitForWork();
    void OpenOrCloseDevice(TimePoint now);
    void PlaySilently(TimePoint now);
    void Record();
    void Announce(TimePoint now);
    bool DeviceServes(TimePoint now) const;

    SpeechEngineOptions options_;
    EngineSynthesizer synthesizer_;
    std::map<const VoiceFamily*, std::unique_ptr<VoicePlayer>> players_; // of the thread that makes the sound
    Playback playback_;
    std::unique_ptr<AudioOutput> output_;
    const Voice* voice_;
    std::wstring lastStatement_;

    mutable std::mutex mutex_;
    std::condition_variable workComes_;
    std::optional<Job> next_;
    bool quit_ = false;
    std::atomic<bool> playsElsewhere_ = false; // an engine that plays by itself has the device
    bool announced_ = false;                   // the user interface has been told and has not looked yet

    // Of the thread that tends the output.
    TimePoint busySince_;
    TimePoint lastBusy_;
    std::optional<TimePoint> silentSince_; // nothing but the clock plays, from then on
    std::int64_t playedSilently_ = 0;
    std::ofstream recordFile_;
    std::optional<WavWriter> recording_;

    std::thread maker_;
    std::thread tender_;
};

} // namespace voxtrel::agent::speech
