#include "agent/speech/utterance_renderer.h"

#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/mouths.h"
#include "audio_measures.h"
#include "rendering.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <set>
#include <string>
#include <vector>

namespace voxtrel::agent::speech {
namespace {

using Kind = SpeechEvent::Kind;

Rendering Render(std::wstring_view markup, std::size_t voice = 0, std::size_t enough = SIZE_MAX)
{
    FliteSynthesizer synthesizer;
    Rendering rendering;
    rendering.enough = enough;
    UtteranceRenderer renderer(markup, AllVoices()[voice], synthesizer, rendering);
    while (renderer.RenderClause()) {
    }
    return rendering;
}

double Seconds(const Rendering& rendering)
{
    return static_cast<double>(rendering.samples.size()) / kSampleRate;
}

constexpr wchar_t kSentence[] = L"The quick brown fox jumps over the lazy dog when Mary came home a year ago";
constexpr std::size_t kVoicesTried[] = {0, 1, 2, 6}; // one of each base

TEST(UtteranceRenderer, BeginsWithinTenMilliseconds)
{
    for (std::size_t voice = 0; voice < AllVoices().size(); ++voice) {
        const Rendering said = Render(L"Hello world.", voice);
        const auto first = std::find_if(said.samples.begin(), said.samples.end(),
                                        [](int sample) { return std::abs(sample) > 40; });
        EXPECT_LE(first - said.samples.begin(), SamplesOf(15)) << voice;
    }
}

TEST(UtteranceRenderer, MakesPausesToTheSample)
{
    const Rendering only = Render(L"\\pau=250\\");
    EXPECT_EQ(only.samples.size(), 4000u);
    EXPECT_EQ(Render(L"\\pau=1234\\").samples.size(), 19744u);
    EXPECT_EQ(Render(L"\\pau=100\\\\pau=100\\").samples.size(), 3200u);
}

TEST(UtteranceRenderer, LetsNothingLengthenAPause)
{
    for (const std::size_t voice : kVoicesTried) {
        for (const wchar_t* markup :
             {L"One more.\\pau=700\\Nothing", L"One more. \\pau=700\\\nNothing",
              L"One more;\\pau=700\\Nothing", L"\\map=\"more;\\pau=700\\\\Mrk=5\\now\"=\"\"\\"}) {
            const Rendering said = Render(markup, voice);
            EXPECT_GE(LongestSilence(said.samples, 0), SamplesOf(700)) << voice;
            EXPECT_LE(LongestSilence(said.samples, 40), SamplesOf(715)) << voice;
        }
    }
}

TEST(UtteranceRenderer, FiresTheMarkAfterAPauseWhenThePauseIsOver)
{
    const Rendering said = Render(L"\\Mrk=1\\\\pau=500\\\\Mrk=2\\Hello\\Mrk=3\\");
    const auto marks = said.TimesOf(Kind::Bookmark);
    ASSERT_EQ(marks.size(), 3u);
    EXPECT_EQ(marks[0], 0);
    EXPECT_GE(marks[1], 8000);
    EXPECT_LE(marks[1], 8000 + SamplesOf(20));
    EXPECT_EQ(marks[2], std::ssize(said.samples));
}

TEST(UtteranceRenderer, PutsWordsWhereTheySound)
{
    // A t begins with a moment in which nothing sounds.
    for (const std::size_t voice : kVoicesTried) {
        const Rendering said = Render(L"\\Mrk=1\\Tom \\Mrk=2\\took \\Mrk=3\\ten \\Mrk=4\\tents.", voice);
        const auto marks = said.TimesOf(Kind::Bookmark);
        ASSERT_EQ(marks.size(), 4u);
        for (std::size_t i = 1; i < marks.size(); ++i) {
            EXPECT_GT(marks[i] - marks[i - 1], SamplesOf(120)) << voice;
            const auto at = static_cast<std::size_t>(marks[i]);
            const std::span<const std::int16_t> all(said.samples);
            int quietest = INT_MAX;
            for (std::size_t from = at - 320; from < at + 800; from += 160) {
                const auto piece = all.subspan(from, 160);
                quietest = std::min(quietest, int{*std::max_element(piece.begin(), piece.end())});
            }
            EXPECT_LT(quietest, 1000) << voice << " " << i;
        }
    }
}

TEST(UtteranceRenderer, HoldsMouthsLongEnoughToBeSeenAndClosesThemInPauses)
{
    const Rendering said = Render(L"Many small people speak quickly. \\pau=300\\ And so on.");
    std::int64_t since = -SamplesOf(50);
    acs::Mouth mouth = acs::Mouth::Closed;
    std::set<acs::Mouth> seen;
    for (std::size_t i = 0; i < said.events.size(); ++i) {
        if (said.events[i].kind != Kind::Mouth)
            continue;
        EXPECT_NE(said.events[i].mouth, mouth);
        const bool opens = said.events[i].mouth != acs::Mouth::Closed;
        EXPECT_TRUE(!opens || said.times[i] - since >= SamplesOf(50));
        since = said.times[i];
        mouth = said.events[i].mouth;
        seen.insert(mouth);
    }
    EXPECT_EQ(mouth, acs::Mouth::Closed);
    EXPECT_GE(seen.size(), 5u);
}

TEST(UtteranceRenderer, MakesTheSameSoundEveryTime)
{
    for (const std::size_t voice : kVoicesTried)
        EXPECT_EQ(Render(kSentence, voice).samples, Render(kSentence, voice).samples) << voice;
}

TEST(UtteranceRenderer, StopsWhenTheSinkHasEnough)
{
    const Rendering said = Render(kSentence, 0, 1000);
    EXPECT_LT(said.samples.size(), 8000u);
    EXPECT_TRUE(said.TimesOf(Kind::End).empty());
}

TEST(UtteranceRenderer, NeedsNoMoreTimeForABookThanForASentence)
{
    std::wstring book = kSentence;
    while (book.size() < 10'000'000)
        book += L" \\Mrk=5\\and so it goes on and on";
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_GE(Render(L"\\map=\"" + book + L"\"=\"\"\\", 2, 1).samples.size(), 1u);
    EXPECT_LT(std::chrono::steady_clock::now() - begin,
              std::chrono::seconds(2)); // reading it all takes minutes
}

TEST(Prosody, SpeedChangesTheDuration)
{
    for (const std::size_t voice : kVoicesTried) {
        const double usual = Seconds(Render(kSentence, voice));
        const auto at = [&](int speed) {
            return Seconds(Render(L"\\Spd=" + std::to_wstring(speed) + L"\\" + kSentence, voice));
        };
        EXPECT_NEAR(at(75) / usual, 2.0, 0.12) << voice;
        EXPECT_NEAR(at(225) / usual, 0.667, 0.06) << voice;
        EXPECT_NEAR(at(150) / usual, 1.0, 0.01) << voice;
        EXPECT_GT(at(50), at(75)) << voice;
        EXPECT_LT(at(250), at(225)) << voice;
    }
}

TEST(Prosody, PitchChangesTheFrequency)
{
    for (const std::size_t voice : kVoicesTried) {
        const double usual = MeasurePitch(Render(kSentence, voice).samples).median;
        const auto at = [&](int pitch) {
            return MeasurePitch(Render(L"\\Pit=" + std::to_wstring(pitch) + L"\\" + kSentence, voice).samples)
                .median;
        };
        EXPECT_NEAR(at(225) / usual, 1.5, 0.15) << voice;
        EXPECT_NEAR(at(120) / usual, 0.8, 0.1) << voice;
        EXPECT_GT(at(400), 2 * usual) << voice;
        EXPECT_LT(at(50), 0.75 * usual) << voice;
    }
}

TEST(Prosody, PitchLeavesTheDuration)
{
    EXPECT_NEAR(Seconds(Render(std::wstring(L"\\Pit=300\\") + kSentence)) / Seconds(Render(kSentence)), 1.0,
                0.02);
}

TEST(Prosody, VolumeIsLinearAndLimitedSoftly)
{
    const double usual = Loudness(Render(kSentence).samples);
    const auto at = [&](int volume) {
        return Render(L"\\Vol=" + std::to_wstring(volume) + L"\\" + kSentence);
    };
    EXPECT_NEAR(Loudness(at(15000).samples) / usual, 0.5, 0.08);
    EXPECT_NEAR(Loudness(at(60000).samples) / usual, 2.0, 0.2);
    const auto loudest = at(65535).samples;
    EXPECT_LT(std::abs(int{*std::max_element(loudest.begin(), loudest.end())}), 32767);
    const Rendering silent = at(0);
    EXPECT_EQ(LongestSilence(silent.samples, 0), std::ssize(silent.samples));
    EXPECT_NEAR(Seconds(silent) / Seconds(Render(kSentence)), 1.0, 0.02);
}

TEST(Prosody, WhisperHasNoVoice)
{
    for (const std::size_t voice : kVoicesTried) {
        const PitchMeasure usual = MeasurePitch(Render(kSentence, voice).samples);
        const auto whisper = Render(std::wstring(L"\\chr=\"Whisper\"\\") + kSentence, voice).samples;
        EXPECT_GT(usual.voiced, 0.4) << voice;
        EXPECT_LT(MeasurePitch(whisper).voiced, 0.08) << voice;
        EXPECT_LT(Loudness(whisper), Loudness(Render(kSentence, voice).samples)) << voice;
        EXPECT_GT(Loudness(whisper), 500) << voice;
    }
}

TEST(Prosody, MonotoneHasNoMelody)
{
    for (const std::size_t voice : kVoicesTried) {
        const PitchMeasure usual = MeasurePitch(Render(kSentence, voice).samples);
        const PitchMeasure flat =
            MeasurePitch(Render(std::wstring(L"\\chr=\"Monotone\"\\") + kSentence, voice).samples);
        EXPECT_LT(flat.spread, 0.4 * usual.spread) << voice;
        EXPECT_LT(flat.spread / flat.median, 0.05) << voice;
    }
}

TEST(Prosody, EmphasisMakesAWordLonger)
{
    EXPECT_GT(Seconds(Render(L"I want the \\Emp\\yellow one")),
              1.02 * Seconds(Render(L"I want the yellow one")));
}

TEST(Prosody, ResetGoesBackToTheDefaults)
{
    EXPECT_NEAR(Seconds(Render(std::wstring(L"\\Spd=60\\\\Rst\\") + kSentence)) / Seconds(Render(kSentence)),
                1.0, 0.01);
}

TEST(Voices, AreToldApartByPitchOrBuild)
{
    struct Impression {
        double pitch, centroid, pace;
    };
    std::vector<Impression> voices;
    for (std::size_t voice = 0; voice < 8; ++voice) {
        const auto samples = Render(kSentence, voice).samples;
        voices.push_back(
            {MeasurePitch(samples).median, SpectralCentroid(samples), static_cast<double>(samples.size())});
    }
    for (std::size_t a = 0; a < voices.size(); ++a) {
        for (std::size_t b = a + 1; b < voices.size(); ++b) {
            const auto apart = [](double x, double y) { return std::abs(std::log(x / y)); };
            EXPECT_GT(apart(voices[a].pitch, voices[b].pitch) +
                          apart(voices[a].centroid, voices[b].centroid) +
                          apart(voices[a].pace, voices[b].pace),
                      0.14)
                << a << " and " << b;
        }
    }
    for (std::size_t male = 0; male < 6; ++male) {
        for (std::size_t female = 6; female < 8; ++female)
            EXPECT_LT(voices[male].pitch, voices[female].pitch);
    }
}

TEST(Voices, AreEquallyLoud)
{
    const double usual = Loudness(Render(kSentence).samples);
    for (std::size_t voice = 1; voice < AllVoices().size(); ++voice)
        EXPECT_NEAR(Loudness(Render(kSentence, voice).samples) / usual, 1.0, 0.3) << voice;
}

TEST(MouthOf, FollowsTheTable)
{
    EXPECT_EQ(MouthOf("pau"), acs::Mouth::Closed);
    EXPECT_EQ(MouthOf("m"), acs::Mouth::Closed);
    EXPECT_EQ(MouthOf("g"), acs::Mouth::Slight);
    EXPECT_EQ(MouthOf("t"), acs::Mouth::Partly);
    EXPECT_EQ(MouthOf("ah"), acs::Mouth::Open);
    EXPECT_EQ(MouthOf("ae"), acs::Mouth::Fully);
    EXPECT_EQ(MouthOf("oy"), acs::Mouth::Medium);
    EXPECT_EQ(MouthOf("uw"), acs::Mouth::Narrow);
    EXPECT_EQ(MouthOf("?"), acs::Mouth::Partly);
}

// Tokens that have upset synthesizers before.
TEST(FliteSynthesizer, BearsOddTokens)
{
    const wchar_t* odd[] = {
        L"a",
        L"A",
        L"I",
        L"x",
        L"MMMMMMMMMMMMMMMMMMMM",
        L"1-2-3-4",
        L"007",
        L"$",
        L"$1,00",
        L"$5.",
        L"9999999999999999999999",
        L"0.00000000000000001",
        L"1/0",
        L"0/0",
        L"2th",
        L"st",
        L"XVIII",
        L"U.S.A.",
        L"O'Neil's",
        L"'''s",
        L"rock'n'roll",
        L"50%%",
        L"12:60",
        L"99:99",
        L"b4b4b4b4",
        L"zzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzz",
        L"hmm",
        L"Dr",
        L"St",
        L"1,2,3,4,5",
        L"-",
        L"--5",
        L"3-",
        L"10-5",
        L"555-1234",
        L"1st2nd",
        L"$$$5",
        L"5$5",
        L"a.b.c.d.e.f",
        L"1.2.3.4",
    };
    for (const std::size_t voice : kVoicesTried) {
        for (const wchar_t* text : odd) {
            for (const wchar_t* style : {L"", L"\\chr=\"Whisper\"\\"}) {
                const Rendering said = Render(std::wstring(style) + L"\\Spd=250\\" + text, voice);
                EXPECT_EQ(said.TimesOf(Kind::End).size(), 1u);
                EXPECT_LT(Seconds(said), 30);
            }
        }
    }
}

} // namespace
} // namespace voxtrel::agent::speech
