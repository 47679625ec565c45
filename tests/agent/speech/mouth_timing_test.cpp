#include "agent/speech/utterance_renderer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace voxtrel::agent::speech {
namespace {

using acs::Mouth;

struct Sound {
    Mouth mouth = Mouth::Closed;
    int milliseconds = 0;
    std::int16_t level = 10'000;
};

// Says the same sounds whatever it is asked for.
class ScriptedSynthesizer : public Synthesizer {
public:
    explicit ScriptedSynthesizer(std::vector<Sound> sounds) : sounds_(std::move(sounds)) {}

    void Prepare(const Voice&) override {}
    void Speak(std::span<const SpokenToken> tokens, const Voice&, const Prosody&, SpeechSink& sink) override
    {
        SpeechTiming timing;
        timing.tokenStarts.assign(tokens.size(), 0);
        std::vector<std::int16_t> samples;
        for (const Sound& sound : sounds_) {
            timing.phonemes.push_back({std::ssize(samples), sound.mouth, false});
            samples.insert(samples.end(), static_cast<std::size_t>(SamplesOf(sound.milliseconds)),
                           sound.level);
        }
        timing.speechEnd = std::ssize(samples);
        static_cast<void>(sink.Timing(timing) && sink.Samples(samples));
    }

private:
    std::vector<Sound> sounds_;
};

struct MouthAt {
    int milliseconds = 0;
    Mouth mouth = Mouth::Closed;
    friend bool operator==(const MouthAt&, const MouthAt&) = default;
    friend void PrintTo(const MouthAt& at, std::ostream* stream)
    {
        *stream << static_cast<int>(at.mouth) << " at " << at.milliseconds;
    }
};

class MouthSink : public UtteranceSink {
public:
    bool Samples(std::span<const std::int16_t>) override { return true; }
    void Event(std::int64_t sample, SpeechEvent event) override
    {
        if (event.kind == SpeechEvent::Kind::Mouth)
            mouths.push_back({static_cast<int>(sample * 1000 / kSampleRate), event.mouth});
    }
    std::vector<MouthAt> mouths;
};

std::vector<MouthAt> MouthsOf(std::vector<Sound> sounds)
{
    ScriptedSynthesizer synthesizer(std::move(sounds));
    MouthSink sink;
    UtteranceRenderer renderer(L"word", AllVoices()[0], synthesizer, sink);
    while (renderer.RenderClause()) {
    }
    return sink.mouths;
}

using Mouths = std::vector<MouthAt>;

TEST(MouthTiming, FollowsSoundsThatAreLongEnough)
{
    EXPECT_EQ(MouthsOf({{Mouth::Open, 100}, {Mouth::Narrow, 80}, {Mouth::Slight, 90}}),
              (Mouths{{0, Mouth::Open}, {100, Mouth::Narrow}, {180, Mouth::Slight}, {270, Mouth::Closed}}));
}

TEST(MouthTiming, LeavesOutAMouthThatWouldMakeTheNextOneLate)
{
    EXPECT_EQ(MouthsOf({{Mouth::Open, 100}, {Mouth::Narrow, 20}, {Mouth::Slight, 90}}),
              (Mouths{{0, Mouth::Open}, {120, Mouth::Slight}, {210, Mouth::Closed}}));
}

TEST(MouthTiming, KeepsEveryMouthWithinTwentyMillisecondsOfItsSound)
{
    const std::vector<Sound> sounds{{Mouth::Open, 35},   {Mouth::Narrow, 40}, {Mouth::Slight, 32},
                                    {Mouth::Partly, 45}, {Mouth::Medium, 12}, {Mouth::Fully, 38},
                                    {Mouth::Open, 31},   {Mouth::Slight, 60}};
    const Mouths shown = MouthsOf(sounds);
    int start = 0;
    std::size_t next = 0;
    for (const Sound& sound : sounds) {
        if (next < shown.size() && shown[next].mouth == sound.mouth &&
            shown[next].milliseconds <= start + 20) {
            EXPECT_GE(shown[next].milliseconds, start);
            ++next;
        }
        start += sound.milliseconds;
    }
    EXPECT_EQ(next + 1, shown.size()); // only the closed mouth of the end is left
    EXPECT_GE(shown.size(), 5U);
    for (std::size_t i = 1; i + 1 < shown.size(); ++i)
        EXPECT_GE(shown[i].milliseconds - shown[i - 1].milliseconds, 50);
}

TEST(MouthTiming, ClosesWhenTheVoiceHasDiedAway)
{
    EXPECT_EQ(MouthsOf({{Mouth::Open, 200}, {Mouth::Open, 150, 200}}),
              (Mouths{{0, Mouth::Open}, {200, Mouth::Closed}}));
}

TEST(MouthTiming, ShowsTheMouthOfASoftLastConsonant)
{
    EXPECT_EQ(MouthsOf({{Mouth::Open, 200}, {Mouth::Partly, 150, 200}}),
              (Mouths{{0, Mouth::Open}, {200, Mouth::Partly}, {250, Mouth::Closed}}));
}

} // namespace
} // namespace voxtrel::agent::speech
