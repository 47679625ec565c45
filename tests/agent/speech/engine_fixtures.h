#pragma once

#include "agent/speech/audio_output.h"
#include "agent/speech/playback.h"
#include "agent/speech/wav_writer.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

// What the tests of the speech engine stand on: a device that plays on command, a sound.
namespace voxtrel::agent::speech {

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
