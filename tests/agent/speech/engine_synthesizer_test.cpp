#include "agent/speech/engine_synthesizer.h"

#include "agent/speech/embedded_engine.h"
#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/speech_factory.h"
#include "agent/speech/voice_catalogue.h"
#include "audio_measures.h"
#include "engine_listener.h"
#include "rendering.h"
#include "scripted_engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace voxtrel::agent::speech {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using Kind = SpeechEvent::Kind;

constexpr std::int64_t kNear = SamplesOf(30);

class ScriptedVoices : public testing::Test {
protected:
    void TearDown() override { script->Release(); }

    const Voice& TheVoice()
    {
        const Voice* voice = catalogue.Find(ScriptedVoice(), 5s);
        EXPECT_NE(voice, nullptr);
        return *voice;
    }

    Rendering Render(std::wstring_view markup)
    {
        Rendering rendering;
        UtteranceRenderer renderer(markup, TheVoice(), synthesizer, rendering);
        while (renderer.RenderClause()) {
        }
        return rendering;
    }

    // The tone of the scripted engine has nothing of a voice.
    static bool IsTone(std::span<const std::int16_t> samples)
    {
        std::size_t crossings = 0;
        for (std::size_t i = 1; i < samples.size(); ++i)
            crossings += (samples[i - 1] < 0) != (samples[i] < 0) ? 1 : 0;
        const double perSecond =
            static_cast<double>(crossings) * kSampleRate / static_cast<double>(samples.size());
        return perSecond > 1950 && perSecond < 2050;
    }

    std::shared_ptr<Script> script = std::make_shared<Script>();
    VoiceCatalogue catalogue{{ScriptedFamily(script)}};
    EngineSynthesizer synthesizer{std::make_unique<FliteSynthesizer>(), {.first = 300ms, .later = 300ms}};
};

constexpr wchar_t kFiveMarks[] =
    L"\\mrk=1\\eins \\mrk=2\\zwei \\mrk=3\\drei \\mrk=4\\vier \\mrk=5\\Ende.\\mrk=6\\";
constexpr wchar_t kFiveMarksTold[] = L"#1 eins #2 zwei #3 drei #4 vier #5 Ende. #6 .";

TEST_F(ScriptedVoices, BookmarksComeAtTheSoundOfTheirWords)
{
    const Rendering made = Render(kFiveMarks);
    EXPECT_EQ(ToldBy(made.events), kFiveMarksTold);
    const std::vector<std::int64_t> marks = made.TimesOf(Kind::Bookmark);
    ASSERT_EQ(marks.size(), 6U);
    for (std::size_t i = 0; i < marks.size(); ++i)
        EXPECT_NEAR(static_cast<double>(marks[i]),
                    static_cast<double>(SamplesOf(200.0 * static_cast<double>(i))), kNear);
}

TEST_F(ScriptedVoices, SoundKeepsItsPitchAndLengthAtAnyRate)
{
    for (const int rate : {8000, 16000, 22050, 24000, 44100, 48000}) {
        SCOPED_TRACE(rate);
        script->sampleRate = rate;
        const Rendering made = Render(L"eins zwei drei vier Ende.");
        EXPECT_NEAR(static_cast<double>(made.samples.size()), static_cast<double>(SamplesOf(1000)), kNear);
        EXPECT_TRUE(IsTone(made.samples));
    }
}

TEST_F(ScriptedVoices, WordsThatTheEngineMergesShareTheTime)
{
    script->reports = [](std::size_t word) {
        return word == 2 || word == 3 ? std::vector<std::size_t>() : std::vector<std::size_t>{word};
    };
    const Rendering made = Render(kFiveMarks);
    EXPECT_EQ(ToldBy(made.events), kFiveMarksTold);
    const auto marks = made.TimesOf(Kind::Bookmark);
    ASSERT_EQ(marks.size(), 6U);
    EXPECT_NEAR(static_cast<double>(marks[2]), static_cast<double>(SamplesOf(400)), kNear);
    EXPECT_NEAR(static_cast<double>(marks[3]), static_cast<double>(SamplesOf(600)), kNear);
}

TEST_F(ScriptedVoices, OfAWordReportedSeveralTimesTheFirstCounts)
{
    script->reports = [](std::size_t word) { return std::vector<std::size_t>(1, word == 3 ? 2 : word); };
    const Rendering made = Render(kFiveMarks);
    EXPECT_EQ(ToldBy(made.events), kFiveMarksTold);
    const auto marks = made.TimesOf(Kind::Bookmark);
    ASSERT_EQ(marks.size(), 6U);
    EXPECT_NEAR(static_cast<double>(marks[2]), static_cast<double>(SamplesOf(400)), kNear);
    EXPECT_NEAR(static_cast<double>(marks[4]), static_cast<double>(SamplesOf(800)), kNear);
}

TEST_F(ScriptedVoices, WithoutAnyWordEventsEveryBookmarkComesInOrder)
{
    script->reports = [](std::size_t) { return std::vector<std::size_t>(); };
    const Rendering made = Render(kFiveMarks);
    EXPECT_EQ(ToldBy(made.events), kFiveMarksTold);
    const auto marks = made.TimesOf(Kind::Bookmark);
    ASSERT_EQ(marks.size(), 6U);
    for (std::size_t i = 1; i < marks.size(); ++i)
        EXPECT_GT(marks[i], marks[i - 1]);
    EXPECT_FALSE(made.TimesOf(Kind::Mouth).empty());
}

TEST_F(ScriptedVoices, BookmarkThatOpensALaterSentenceComes)
{
    const Rendering made = Render(L"Eine Zeile. \\mrk=7\\In the garden. \\mrk=8\\Ende.");
    EXPECT_EQ(ToldBy(made.events), L"Eine Zeile. #7 In the garden. #8 Ende. .");
    EXPECT_EQ(script->Said(), (std::vector<std::wstring>{L"Eine Zeile.", L"In the garden.", L"Ende."}));
}

TEST_F(ScriptedVoices, TextReachesTheEngineAsItIsWritten)
{
    Render(L"Die Stra\u00DFe f\u00FCr 1.250,50 \u20AC ist z.B. sch\u00F6n!");
    EXPECT_EQ(script->Said(),
              (std::vector<std::wstring>{L"Die Stra\u00DFe f\u00FCr 1.250,50 \u20AC ist z.B. sch\u00F6n!"}));
}

TEST_F(ScriptedVoices, BuiltInVoiceSaysTheRestWhenTheEngineFails)
{
    script->failsIn = 3;
    const Rendering made = Render(std::wstring(kFiveMarks) + L" Another sentence.");
    EXPECT_EQ(ToldBy(made.events), L"#1 eins #2 zwei #3 drei #4 vier #5 Ende. #6 Another sentence. .");
    const std::span<const std::int16_t> samples(made.samples);
    EXPECT_TRUE(IsTone(samples.subspan(SamplesOf(20), SamplesOf(550))));
    ASSERT_GT(samples.size(), static_cast<std::size_t>(SamplesOf(1500)));
    EXPECT_FALSE(IsTone(samples.subspan(SamplesOf(650))));
    EXPECT_GT(MeasurePitch(samples.subspan(SamplesOf(650))).voiced, 0.2);
    // The word that broke off is said again, and the other sentence by the same voice.
    const auto marks = made.TimesOf(Kind::Bookmark);
    ASSERT_EQ(marks.size(), 6U);
    EXPECT_GE(marks[3], SamplesOf(600) - kNear);
    EXPECT_EQ(script->Said().size(), 1U);
}

TEST_F(ScriptedVoices, NextUtteranceTriesTheEngineAgain)
{
    script->failsIn = 1;
    Render(kFiveMarks);
    script->failsIn.reset();
    EXPECT_TRUE(IsTone(Render(kFiveMarks).samples));
}

TEST_F(ScriptedVoices, BuiltInVoiceSaysTheRestWhenTheEngineHangs)
{
    script->hangsIn = 2;
    const Rendering made = Render(kFiveMarks);
    EXPECT_EQ(ToldBy(made.events), kFiveMarksTold);
    EXPECT_TRUE(IsTone(std::span(made.samples).subspan(SamplesOf(20), SamplesOf(350))));
    EXPECT_GT(made.samples.size(), static_cast<std::size_t>(SamplesOf(1000)));
    EXPECT_EQ(script->hanging, 1);

    script->hangsIn.reset();
    EXPECT_TRUE(IsTone(Render(kFiveMarks).samples)) << "on another thread";
    EXPECT_EQ(script->made, 2);
}

TEST_F(ScriptedVoices, EngineThatHangsAgainAndAgainIsLeftAlone)
{
    script->hangsIn = 0;
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(ToldBy(Render(kFiveMarks).events), kFiveMarksTold);
    EXPECT_EQ(script->made, 2);
}

TEST_F(ScriptedVoices, TextWithoutASoundLosesNoBookmark)
{
    script->failsIn = 0;
    const Rendering made = Render(L"\\mrk=1\\\u0434\u0430 \\mrk=2\\\u043D\u0435\u0442 \\mrk=3\\");
    EXPECT_EQ(ToldBy(made.events), L"#1 \u0434\u0430 #2 \u043D\u0435\u0442 #3 .");
}

TEST_F(ScriptedVoices, WavFileIsSpokenByTheEngine)
{
    std::ostringstream out;
    ASSERT_TRUE(RenderToWav(L"eins zwei Ende.", ScriptedVoice(), out, {}, {}, &catalogue).Ok());
    EXPECT_NEAR(static_cast<double>(out.str().size()), 2.0 * static_cast<double>(SamplesOf(600)),
                2.0 * kNear);
}

TEST_F(ScriptedVoices, WavFileWithAVoiceThatIsGoneIsRefused)
{
    script->keys.clear();
    std::ostringstream out;
    const Result refused = RenderToWav(L"eins.", ScriptedVoice(), out, {}, {}, &catalogue);
    EXPECT_EQ(refused.code, ErrorCode::VoiceNotAvailable);
}

class ScriptedEngineAtWork : public testing::Test {
protected:
    ~ScriptedEngineAtWork() override { script->Release(); }

    std::unique_ptr<SpeechEngine> Make()
    {
        SpeechEngineOptions options;
        options.output = SpeechEngineOptions::Output::Silent;
        options.wake = bell.Ringer();
        options.systemVoices = std::make_shared<VoiceCatalogue>(std::vector{ScriptedFamily(script)});
        return MakeSpeechEngine(std::move(options));
    }

    bool RunToEnd(SpeechEngine& engine)
    {
        return bell.WaitFor([&] {
            for (SpeechEvent& event : engine.TakeDueEvents())
                events.push_back(std::move(event));
            return !engine.Speaking();
        });
    }

    std::shared_ptr<Script> script = std::make_shared<Script>();
    Bell bell;
    std::vector<SpeechEvent> events;
};

TEST_F(ScriptedEngineAtWork, IsNotAskedForItsVoicesUntilOneIsChosen)
{
    const auto engine = Make();
    engine->Start(L"Hi.");
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_TRUE(engine->SetMode(AllVoices()[1].modeId).Ok());
    EXPECT_EQ(engine->SetMode(L"{12345678-0000-0000-0000-000000000000}").code, ErrorCode::VoiceNotAvailable);
    EXPECT_EQ(script->listed, 0);
    EXPECT_TRUE(engine->SetMode(ScriptedVoice()).Ok());
    EXPECT_EQ(script->listed, 1);
    EXPECT_EQ(script->made, 0);
}

TEST_F(ScriptedEngineAtWork, SpeaksWithTheChosenVoice)
{
    const auto engine = Make();
    ASSERT_TRUE(engine->SetMode(ScriptedVoice()).Ok());
    EXPECT_EQ(engine->Mode(), ScriptedVoice());
    engine->Start(kFiveMarks);
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(ToldBy(events), kFiveMarksTold);
    EXPECT_EQ(script->Said().size(), 1U);
}

TEST_F(ScriptedEngineAtWork, VoiceThatIsNotInstalledLeavesTheVoiceInUse)
{
    script->keys.clear();
    const auto engine = Make();
    const std::wstring before = engine->Mode();
    const Result refused = engine->SetMode(ScriptedVoice());
    EXPECT_EQ(refused.code, ErrorCode::VoiceNotAvailable);
    EXPECT_FALSE(refused.description.empty());
    EXPECT_EQ(engine->Mode(), before);
}

TEST_F(ScriptedEngineAtWork, HungEngineDelaysNeitherStopNorTheNextUtterance)
{
    const auto engine = Make();
    ASSERT_TRUE(engine->SetMode(ScriptedVoice()).Ok());
    script->hangsIn = 0;
    engine->Start(kFiveMarks);
    ASSERT_TRUE(bell.WaitFor([&] { return script->hanging == 1; }));

    const auto before = steady_clock::now();
    engine->Stop();
    EXPECT_FALSE(engine->Speaking());
    EXPECT_TRUE(engine->SetMode(AllVoices()[0].modeId).Ok());
    engine->Start(L"\\mrk=9\\Hello.");
    ASSERT_TRUE(bell.WaitFor([&] {
        for (SpeechEvent& event : engine->TakeDueEvents())
            events.push_back(std::move(event));
        return !events.empty();
    }));
    EXPECT_LT(steady_clock::now() - before, 2s);
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(ToldBy(events), L"#9 Hello. .");
}

} // namespace
} // namespace voxtrel::agent::speech
