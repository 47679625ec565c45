#include "agent/speech/engine_synthesizer.h"
#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/voice_catalogue.h"
#include "agent/speech/wav_reader.h"
#include "agent/voices/linux/espeak_engine.h"
#include "agent/voices/system_voices.h"
#include "tests/agent/speech/audio_measures.h"
#include "tests/agent/speech/engine_listener.h"
#include "tests/agent/speech/rendering.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <set>

namespace voxtrel::agent::voices {
namespace {

using namespace speech;
using namespace std::chrono_literals;
using Kind = SpeechEvent::Kind;

constexpr char kGermanSentence[] = "Die Stra\xC3\x9F"
                                   "e in M\xC3\xBCnchen ist sch\xC3\xB6n, aber laut.";
constexpr wchar_t kGermanMarkup[] = L"Die Stra\u00DFe in M\u00FCnchen ist sch\u00F6n, aber laut.";

class Espeak : public testing::Test {
protected:
    const Voice& VoiceOf(std::wstring_view key)
    {
        const Voice* voice = catalogue.Find(VoiceModeId(kEspeakCode, key), 10s);
        EXPECT_NE(voice, nullptr) << "the library of eSpeak NG is needed";
        return voice ? *voice : AllVoices().front();
    }

    Rendering Render(std::wstring_view markup, std::wstring_view key = L"de")
    {
        Rendering rendering;
        UtteranceRenderer renderer(markup, VoiceOf(key), synthesizer, rendering);
        while (renderer.RenderClause()) {
        }
        return rendering;
    }

    VoiceCatalogue catalogue{{EspeakFamily()}};
    EngineSynthesizer synthesizer{std::make_unique<FliteSynthesizer>()};
};

TEST_F(Espeak, ListsOneVoiceForEachLanguage)
{
    const auto voices = catalogue.All(10s);
    EXPECT_GT(voices.size(), 50U);
    std::set<std::wstring> ids, names;
    for (const SystemVoice& voice : voices) {
        EXPECT_TRUE(ids.insert(voice.modeId).second) << voice.displayName;
        EXPECT_TRUE(names.insert(voice.displayName).second) << voice.displayName;
        EXPECT_FALSE(voice.language.empty()) << voice.displayName;
        EXPECT_TRUE(voice.displayName.ends_with(L", eSpeak NG")) << voice.displayName;
    }
    const Voice& german = VoiceOf(L"de");
    EXPECT_EQ(german.modeId, L"{E59EA4B1-D2C6-8438-9EBE-7F74041E47A0}");
    EXPECT_EQ(german.name, L"German, eSpeak NG");
    EXPECT_EQ(german.system->language, L"de");
}

// Takes all and keeps the samples.
struct CountingSink : EngineSink {
    bool Begin(int) override { return true; }
    bool Samples(std::span<const std::int16_t> samples) override
    {
        count += samples.size();
        return true;
    }
    bool Word(std::int64_t, std::size_t) override { return true; }
    bool Mouth(std::int64_t, acs::Mouth) override { return true; }

    std::size_t count = 0;
};

TEST_F(Espeak, EachListedVoiceSpeaks)
{
    const auto engine = EspeakFamily().makeEngine();
    for (const SystemVoice& voice : catalogue.All(10s)) {
        CountingSink sink;
        EXPECT_TRUE(engine->Speak(voice, {.words = {{L"12"}}, .prosody = {}}, sink)) << voice.displayName;
        const std::wstring_view key = voice.key;
        if (key == L"de" || key == L"en-US" || key == L"fr" || key == L"ru" || key == L"ja" ||
            key == L"cmn") {
            EXPECT_GT(sink.count, 1000U) << voice.displayName;
        }
    }
}

// What the program of eSpeak NG makes of a text.
std::vector<std::int16_t> ProgramSays(const std::string& language, const std::string& text)
{
    const std::string command = "espeak-ng -v " + language + " --stdout '" + text + "'";
    std::vector<std::uint8_t> bytes;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::uint8_t chunk[65536];
    while (const std::size_t count = pipe ? std::fread(chunk, 1, sizeof chunk, pipe.get()) : 0)
        bytes.insert(bytes.end(), chunk, chunk + count);
    return ReadWav(bytes);
}

// How loud each hundredth of a second of the audible part is.
std::vector<double> Envelope(std::span<const std::int16_t> samples)
{
    const auto loud = [](std::int16_t sample) { return std::abs(sample) > 200; };
    const auto begin = std::find_if(samples.begin(), samples.end(), loud);
    const auto end = std::find_if(samples.rbegin(), samples.rend(), loud).base();
    std::vector<double> envelope;
    for (auto at = begin; at < end; at += std::min<std::ptrdiff_t>(SamplesOf(10), end - at)) {
        double power = 0;
        const auto until = at + std::min<std::ptrdiff_t>(SamplesOf(10), end - at);
        for (auto sample = at; sample != until; ++sample)
            power += static_cast<double>(*sample) * *sample;
        envelope.push_back(std::sqrt(power));
    }
    return envelope;
}

double Correlation(const std::vector<double>& a, const std::vector<double>& b)
{
    const std::size_t size = std::min(a.size(), b.size());
    double meanA = 0, meanB = 0;
    for (std::size_t i = 0; i < size; ++i) {
        meanA += a[i] / static_cast<double>(size);
        meanB += b[i] / static_cast<double>(size);
    }
    double both = 0, ofA = 0, ofB = 0;
    for (std::size_t i = 0; i < size; ++i) {
        both += (a[i] - meanA) * (b[i] - meanB);
        ofA += (a[i] - meanA) * (a[i] - meanA);
        ofB += (b[i] - meanB) * (b[i] - meanB);
    }
    return both / std::sqrt(ofA * ofB);
}

TEST_F(Espeak, SpeaksGermanAsTheProgramDoes)
{
    // In one clause, as the program has it.
    Rendering heard;
    const auto tokens = [] {
        std::vector<SpokenToken> made;
        ClauseCutter cutter(kGermanMarkup, ClauseCutter::Bookmarks::Report, ClauseCutter::Wording::AsWritten);
        for (Clause clause = cutter.Next();; clause = cutter.Next()) {
            made.insert(made.end(), clause.tokens.begin(), clause.tokens.end());
            if (clause.last)
                return made;
        }
    }();
    struct KeepingSink : SpeechSink {
        bool Timing(const SpeechTiming&) override { return true; }
        bool Samples(std::span<const std::int16_t> more) override
        {
            samples.insert(samples.end(), more.begin(), more.end());
            return true;
        }
        std::vector<std::int16_t> samples;
    } spoken;
    synthesizer.Speak(tokens, VoiceOf(L"de"), {}, spoken);

    const auto ours = Envelope(spoken.samples);
    const auto german = Envelope(ProgramSays("de", kGermanSentence));
    const auto english = Envelope(ProgramSays("en-us", kGermanSentence));
    ASSERT_GT(german.size(), 100U) << "the program espeak-ng is needed";
    EXPECT_NEAR(static_cast<double>(ours.size()), static_cast<double>(german.size()), 5);
    EXPECT_GT(Correlation(ours, german), 0.95);
    EXPECT_LT(Correlation(ours, english), 0.6);
}

TEST_F(Espeak, EveryBookmarkComesOnceAndInOrder)
{
    // "in the" is one event of the library, "1,250.50" are seven, and the mark that opens a sentence is one
    // that engines lose.
    std::wstring markup;
    std::vector<std::int32_t> expected;
    for (const wchar_t* word :
         {L"He", L"sat", L"in", L"the", L"garden", L"of", L"the", L"old", L"man.", L"In", L"the", L"end",
          L"1,250.50", L"dollars", L"\u2014", L"were", L"\u20AC5", L"too", L"much."}) {
        expected.push_back(static_cast<std::int32_t>(expected.size()) + 1);
        markup += L"\\mrk=" + std::to_wstring(expected.back()) + L"\\" + word + L" ";
    }
    const Rendering made = Render(markup, L"en-US");
    std::vector<std::int32_t> told;
    for (const SpeechEvent& event : made.events) {
        if (event.kind == Kind::Bookmark)
            told.push_back(event.number);
    }
    EXPECT_EQ(told, expected);
    const auto times = made.TimesOf(Kind::Bookmark);
    EXPECT_LT(times.back(), std::ssize(made.samples));
    for (std::size_t i = 1; i < times.size(); ++i) {
        const bool silent = expected[i] == 16; // the dash: the next word has its place
        EXPECT_GT(times[i] + (silent ? 1 : 0), times[i - 1]) << expected[i];
    }
}

TEST_F(Espeak, BookmarksAreNearTheSoundOfTheirWord)
{
    // The beginning of a sentence takes as long as the same words alone.
    const std::wstring words[] = {L"Seven",  L"brown",  L"dogs",       L"chased",
                                  L"twenty", L"yellow", L"butterflies"};
    std::wstring markup, alone;
    for (const std::wstring& word : words)
        markup += L"\\mrk=1\\" + word + L" ";
    const auto times = Render(markup, L"en-US").TimesOf(Kind::Bookmark);
    ASSERT_EQ(times.size(), std::size(words));
    for (std::size_t i = 0; i + 1 < std::size(words); ++i) {
        alone += words[i] + L" ";
        const auto length = static_cast<double>(Render(alone + L"\u2026", L"en-US").samples.size());
        EXPECT_NEAR(static_cast<double>(times[i + 1]), length, static_cast<double>(SamplesOf(200)))
            << words[i];
    }
}

TEST_F(Espeak, ProsodyIsRelativeToTheVoice)
{
    const Rendering usual = Render(kGermanMarkup);
    const PitchMeasure pitch = MeasurePitch(usual.samples);
    const auto length = static_cast<double>(usual.samples.size());

    const PitchMeasure high = MeasurePitch(Render(std::wstring(L"\\pit=225\\") + kGermanMarkup).samples);
    EXPECT_NEAR(high.median / pitch.median, 1.5, 0.2);
    const PitchMeasure low = MeasurePitch(Render(std::wstring(L"\\pit=100\\") + kGermanMarkup).samples);
    EXPECT_NEAR(low.median / pitch.median, 0.67, 0.15);

    const auto fast =
        static_cast<double>(Render(std::wstring(L"\\spd=225\\") + kGermanMarkup).samples.size());
    EXPECT_NEAR(fast / length, 1 / 1.5, 0.12);
    const auto slow =
        static_cast<double>(Render(std::wstring(L"\\spd=100\\") + kGermanMarkup).samples.size());
    EXPECT_NEAR(slow / length, 1.5, 0.25);

    const PitchMeasure flat =
        MeasurePitch(Render(std::wstring(L"\\chr=\"Monotone\"\\") + kGermanMarkup).samples);
    EXPECT_LT(flat.spread, pitch.spread / 2);
    const PitchMeasure whisper =
        MeasurePitch(Render(std::wstring(L"\\chr=\"Whisper\"\\") + kGermanMarkup).samples);
    EXPECT_LT(whisper.voiced, pitch.voiced / 2);

    const double loud = Loudness(usual.samples);
    const double half = Loudness(Render(std::wstring(L"\\vol=15000\\") + kGermanMarkup).samples);
    EXPECT_NEAR(half / loud, 0.5, 0.1);
}

TEST_F(Espeak, IsAsLoudAsTheBuiltInVoices)
{
    const double ours =
        Loudness(Render(L"Seven brown dogs chased twenty yellow butterflies.", L"en-US").samples);
    Rendering builtIn;
    UtteranceRenderer renderer(L"Seven brown dogs chased twenty yellow butterflies.", AllVoices().front(),
                               synthesizer, builtIn);
    while (renderer.RenderClause()) {
    }
    EXPECT_NEAR(ours / Loudness(builtIn.samples), 1, 0.3);
}

TEST_F(Espeak, EmphasizedWordKeepsItsPlace)
{
    const Rendering made =
        Render(L"\\mrk=1\\Das \\mrk=2\\ist \\emp\\\\mrk=3\\sehr \\mrk=4\\<sch\u00F6n> & \\mrk=5\\gut.");
    EXPECT_EQ(ToldBy(made.events), L"#1 Das #2 ist #3 sehr #4 <sch\u00F6n> & #5 gut. .");
    const auto times = made.TimesOf(Kind::Bookmark);
    EXPECT_GT(times[3] - times[2], times[1] - times[0]);
}

TEST_F(Espeak, MouthsMoveWithTheSound)
{
    const Rendering made = Render(kGermanMarkup);
    std::set<acs::Mouth> shapes;
    for (const SpeechEvent& event : made.events) {
        if (event.kind == Kind::Mouth)
            shapes.insert(event.mouth);
    }
    EXPECT_GE(shapes.size(), 5U);
    EXPECT_GT(made.TimesOf(Kind::Mouth).size(), 15U);
}

} // namespace
} // namespace voxtrel::agent::voices
