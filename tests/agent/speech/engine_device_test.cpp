#include "agent/speech/embedded_engine.h"
#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/speech_factory.h"
#include "tests/agent/speech/engine_fixtures.h"
#include "tests/agent/speech/engine_listener.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace voxtrel::agent::speech {
namespace {

using namespace std::chrono_literals;
using Kind = SpeechEvent::Kind;

class EngineWithDevice : public testing::Test {
protected:
    void Make(bool deviceWorks)
    {
        engine_ = std::make_unique<EmbeddedEngine>(
            SpeechEngineOptions{}, std::make_unique<FliteSynthesizer>(), [&](SampleSource& source) {
                auto device = std::make_unique<FakeDevice>(source);
                device->openWorks = deviceWorks;
                device_ = device.get();
                return device;
            });
    }

    // Plays until something can be heard.
    bool PlayUntilLoud()
    {
        return bell_.WaitFor([&] { return Peak(device_->Play(160)) > 1000; });
    }

    static int Peak(const std::vector<std::int16_t>& samples)
    {
        int peak = 0;
        for (const std::int16_t sample : samples)
            peak = std::max(peak, std::abs(int{sample}));
        return peak;
    }

    Bell bell_;
    std::unique_ptr<EmbeddedEngine> engine_;
    FakeDevice* device_ = nullptr;
};

TEST_F(EngineWithDevice, IsSilentWithinFiftyMillisecondsOfAStopAndDoesNotClick)
{
    Make(true);
    engine_->Start(L"Nobody wanted to wait any longer for the answer of the committee.");
    ASSERT_TRUE(PlayUntilLoud());
    const std::vector<std::int16_t> before = device_->Play(160);
    engine_->Stop();
    const std::vector<std::int16_t> after = device_->Play(1600);
    EXPECT_EQ(Peak({after.begin() + 16 * 10, after.end()}), 0); // 10 ms and the device's own delay remain
    const int atSeam = std::abs(int{after.front()} - int{before.back()});
    EXPECT_LE(atSeam,
              std::max(2000, 2 * std::abs(int{before.back()} - int{before[before.size() - 2]}) + 2000));
    for (std::size_t i = 1; i < 100; ++i)
        EXPECT_LT(std::abs(int{after[i]} - int{after[i - 1]}), 12000);
}

TEST_F(EngineWithDevice, FiresEventsWhenTheirSampleHasBeenPlayedAndNotBefore)
{
    Make(true);
    engine_->Start(L"\\pau=100\\\\Mrk=1\\\\pau=100\\\\Mrk=2\\");
    ASSERT_TRUE(bell_.WaitFor([&] { return device_->state == AudioOutput::State::Playing; }));
    std::vector<SpeechEvent> events;
    std::size_t played = 0;
    ASSERT_TRUE(bell_.WaitFor([&] {
        device_->Play(played < 1500 ? 100 : 10);
        played += played < 1500 ? 100 : 10;
        for (SpeechEvent& event : engine_->TakeDueEvents())
            events.push_back(std::move(event));
        return !events.empty();
    }));
    EXPECT_EQ(events.front().number, 1);
    EXPECT_GE(played, 1600u);
}

TEST_F(EngineWithDevice, KnowsWhenTheNextEventWillBeHeardOnceItsSampleIsWithTheDevice)
{
    Make(true);
    engine_->Start(L"\\pau=2000\\\\Mrk=1\\");
    ASSERT_TRUE(bell_.WaitFor([&] { return device_->state == AudioOutput::State::Playing; }));
    EXPECT_FALSE(engine_->UntilNextEvent().has_value());
    device_->Play(SamplesOf(1000));
    EXPECT_FALSE(engine_->UntilNextEvent().has_value());
    ASSERT_TRUE(bell_.WaitFor([&] {
        device_->Play(SamplesOf(500));
        return engine_->UntilNextEvent().has_value();
    }));
    EXPECT_GT(*engine_->UntilNextEvent(), 100ms);
    EXPECT_LE(*engine_->UntilNextEvent(), 1000ms);
}

TEST_F(EngineWithDevice, FallsBackToSilenceWhenTheDeviceDoesNotOpen)
{
    Make(false);
    engine_->Start(L"\\Mrk=1\\\\pau=100\\\\Mrk=2\\");
    int marks = 0;
    EXPECT_TRUE(bell_.WaitFor([&] {
        for (const SpeechEvent& event : engine_->TakeDueEvents())
            marks += event.kind == Kind::Bookmark ? 1 : 0;
        return !engine_->Speaking();
    }));
    EXPECT_EQ(marks, 2);
}

TEST_F(EngineWithDevice, FallsBackToSilenceWhenTheDeviceStopsPlaying)
{
    Make(true);
    engine_->Start(L"\\pau=100\\\\Mrk=1\\");
    EXPECT_TRUE(bell_.WaitFor([&] {
        static_cast<void>(engine_->TakeDueEvents());
        return !engine_->Speaking();
    }));
}

TEST_F(EngineWithDevice, ClosesTheDeviceAfterAWhileOfSilence)
{
    Make(true);
    // Opened before it is needed.
    EXPECT_TRUE(bell_.WaitFor([&] { return device_->state == AudioOutput::State::Playing; }));
    EXPECT_TRUE(bell_.WaitFor([&] { return device_->state == AudioOutput::State::Closed; }));
    engine_->Start(L"\\Mrk=1\\\\pau=10\\");
    EXPECT_TRUE(bell_.WaitFor([&] { return device_->state == AudioOutput::State::Playing; }));
}

TEST_F(EngineWithDevice, PlaysASoundWithoutAVoice)
{
    Make(true);
    EXPECT_EQ(engine_->Sounds()->StartSound(LevelWave(5000, 1600)), 100ms);
    ASSERT_TRUE(bell_.WaitFor([&] { return device_->state == AudioOutput::State::Playing; }));
    const std::vector<std::int16_t> played = device_->Play(2000);
    EXPECT_EQ(std::count(played.begin(), played.end(), 5000), 1600);
    EXPECT_EQ(played.back(), 0);
}

TEST_F(EngineWithDevice, MixesSoundsWithinTheRangeOfTheDevice)
{
    Make(true);
    engine_->Sounds()->StartSound(LevelWave(20'000, 1600));
    engine_->Sounds()->StartSound(LevelWave(20'000, 800));
    const std::vector<std::int16_t> played = device_->Play(1600);
    EXPECT_EQ(played.front(), 32767);
    EXPECT_EQ(played.back(), 20'000);
}

TEST_F(EngineWithDevice, SoundsFadeOutQuicklyWhenStopped)
{
    Make(true);
    engine_->Sounds()->StartSound(LevelWave(20'000, 16'000));
    device_->Play(160);
    engine_->Sounds()->StopSounds();
    const std::vector<std::int16_t> after = device_->Play(1600);
    EXPECT_GT(after.front(), 15'000);
    EXPECT_EQ(Peak({after.begin() + 160, after.end()}), 0);
}

TEST_F(EngineWithDevice, SoundsDoNotDelayTheEventsOfTheVoice)
{
    Make(true);
    engine_->Sounds()->StartSound(LevelWave(1000, 16'000));
    engine_->Start(L"\\pau=100\\\\Mrk=1\\");
    std::size_t played = 0;
    ASSERT_TRUE(bell_.WaitFor([&] {
        device_->Play(10);
        played += 10;
        return !engine_->TakeDueEvents().empty();
    }));
    EXPECT_GE(played, 1600u);
    EXPECT_EQ(device_->Play(1).front(), 1000);
}

// The real device, if there is one: nothing is measured, but everything arrives.
TEST(DeviceEngine, SpeaksWhateverDeviceThereIs)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP()
        << "Drivers that are loaded and unloaded on the way leave memory behind, which would count as ours.";
#endif
    Bell bell;
    const auto engine = MakeSpeechEngine({.wake = bell.Ringer()});
    engine->Start(L"\\Vol=0\\\\Mrk=1\\\\pau=50\\\\Mrk=2\\");
    std::vector<std::int32_t> marks;
    EXPECT_TRUE(bell.WaitFor([&] {
        for (const SpeechEvent& event : engine->TakeDueEvents()) {
            if (event.kind == Kind::Bookmark)
                marks.push_back(event.number);
        }
        return !engine->Speaking();
    }));
    EXPECT_EQ(marks, (std::vector<std::int32_t>{1, 2}));
}

} // namespace
} // namespace voxtrel::agent::speech
