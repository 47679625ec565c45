#pragma once

#include "agent/speech/audio_output.h"
#include "agent/speech/playback.h"
#include "agent/speech/wav_writer.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

// What the tests of the speech engine stand on: a bounded wait, a device that plays on command, a sound.
namespace voxtrel::agent::speech {

// A condition with a limit: wakes up with the engine and now and then.
class Bell {
public:
    std::function<void()> Ringer()
    {
        return [this] {
            ++rung_;
            changed_.notify_all();
        };
    }

    template <typename Condition>
    bool WaitFor(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(20))
    {
        std::unique_lock lock(mutex_);
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            changed_.wait_for(lock, std::chrono::milliseconds(2));
        }
        return true;
    }

    int Rung() const { return rung_; }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::atomic<int> rung_ = 0;
};

// A WAV file of one channel with 16 bits that is always at this level.
inline std::vector<std::uint8_t> LevelWave(std::int16_t level, std::uint32_t count)
{
    std::ostringstream stream;
    WavWriter writer(stream);
    writer.Write(std::vector<std::int16_t>(count, level));
    writer.UpdateHeader();
    const std::string bytes = stream.str();
    return {bytes.begin(), bytes.end()};
}

// A sound device that plays when the test says so.
class FakeDevice : public AudioOutput {
public:
    explicit FakeDevice(SampleSource& source) : source_(source) {}

    void Open() override { state = openWorks ? State::Playing : State::Failed; }
    void Close() override { state = State::Closed; }
    void GiveUp() override
    {
        state = State::Failed;
        openWorks = false;
    }
    State CurrentState() const override { return state; }

    // Plays so many samples, heard at once.
    std::vector<std::int16_t> Play(std::size_t count)
    {
        std::vector<std::int16_t> samples(count);
        source_.Pull(samples, std::chrono::steady_clock::now());
        return samples;
    }

    std::atomic<State> state = State::Closed;
    std::atomic<bool> openWorks = true;

private:
    SampleSource& source_;
};

} // namespace voxtrel::agent::speech
