#include "agent/speech/embedded_engine.h"
#include "agent/speech/speech_factory.h"
#include "agent/speech/voice_catalogue.h"
#include "agent/voices/linux/dispatcher_player.h"
#include "agent/voices/system_voices.h"
#include "tests/agent/speech/engine_listener.h"
#include "tests/agent/voices/speech_service.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace voxtrel::agent::voices {
namespace {

using namespace speech;
using namespace std::chrono_literals;
using std::chrono::steady_clock;
using Kind = SpeechEvent::Kind;

// With the real service and its output modules.
class Dispatcher : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(service.Problem(), ""); }

    std::unique_ptr<SpeechEngine> Make(std::wstring_view key)
    {
        SpeechEngineOptions options;
        options.output = SpeechEngineOptions::Output::Silent;
        options.wake = bell.Ringer();
        options.systemVoices = catalogue;
        auto engine = MakeSpeechEngine(std::move(options));
        EXPECT_TRUE(engine->SetMode(VoiceModeId(kDispatcherCode, key)).Ok());
        return engine;
    }

    void Begin(SpeechEngine& engine, std::wstring markup)
    {
        begun = steady_clock::now();
        engine.Start(std::move(markup));
    }

    void Take(SpeechEngine& engine)
    {
        for (SpeechEvent& event : engine.TakeDueEvents()) {
            if (event.kind != Kind::Mouth)
                times.push_back(std::chrono::duration<double>(steady_clock::now() - begun).count());
            if (event.kind != Kind::Mouth)
                events.push_back(std::move(event));
        }
    }

    bool RunUntil(SpeechEngine& engine, std::wstring_view told)
    {
        return bell.WaitFor([&] {
            Take(engine);
            return ToldBy(events).starts_with(told);
        });
    }

    SpeechService service;
    std::shared_ptr<VoiceCatalogue> catalogue =
        std::make_shared<VoiceCatalogue>(std::vector{DispatcherFamily()});
    Bell bell;
    std::vector<SpeechEvent> events;
    std::vector<double> times; // of events, in seconds since the beginning
    steady_clock::time_point begun;
};

constexpr wchar_t kGerman[] = L"\\mrk=1\\Die \\mrk=2\\Stra\u00DFe \\mrk=3\\ist \\mrk=4\\in \\mrk=5\\der "
                              L"\\mrk=6\\N\u00E4he. \\mrk=7\\In \\mrk=8\\einer \\mrk=9\\Stunde.";
constexpr wchar_t kGermanTold[] =
    L"#1 Die #2 Stra\u00DFe #3 ist #4 in #5 der #6 N\u00E4he. #7 In #8 einer #9 Stunde. .";

TEST_F(Dispatcher, ListsTheVoicesOfAllItsModules)
{
    const auto voices = catalogue->All(15s);
    const auto named = [&voices](std::wstring_view name) {
        return std::count_if(voices.begin(), voices.end(),
                             [name](const SystemVoice& voice) { return voice.displayName == name; });
    };
    EXPECT_EQ(named(L"German, Speech Dispatcher espeak-ng"), 1);
    EXPECT_GE(
        std::count_if(voices.begin(), voices.end(),
                      [](const SystemVoice& voice) { return voice.engine == L"Speech Dispatcher flite"; }),
        1);
    EXPECT_LT(voices.size(), 300U) << "without the tones of each voice";
    EXPECT_NE(catalogue->Find(L"{5D15BA7C-446E-8A70-B511-4E2D02E8824D}", 1s), nullptr);
}

TEST_F(Dispatcher, BookmarksAndWordsComeWithTheirSound)
{
    const auto engine = Make(L"espeak-ng:German");
    Begin(*engine, kGerman);
    ASSERT_TRUE(RunUntil(*engine, kGermanTold));
    EXPECT_EQ(ToldBy(events), kGermanTold);
    // A second and a half for the first sentence, a bit less for the other: nothing is told in advance.
    EXPECT_LT(times.front(), 1.0);
    EXPECT_GT(times[10], 0.7) << "#6";
    EXPECT_GT(times.back(), 2.0);
    EXPECT_LT(times.back(), 6.0);
    constexpr std::size_t kApart[] = {2, 6, 10, 12,
                                      16}; // #2 #4 #6 #7 #9; "in der" is one word for the engine
    for (std::size_t i = 1; i < std::size(kApart); ++i)
        EXPECT_GT(times[kApart[i]], times[kApart[i - 1]] + 0.05) << i;
}

TEST_F(Dispatcher, ModuleWithoutMarksIsFollowedByGuess)
{
    const auto voices = catalogue->All(15s);
    const auto flite = std::find_if(voices.begin(), voices.end(), [](const SystemVoice& voice) {
        return voice.engine == L"Speech Dispatcher flite";
    });
    ASSERT_NE(flite, voices.end());
    const auto engine = Make(flite->key);
    Begin(*engine, L"\\mrk=1\\Seven \\mrk=2\\brown \\mrk=3\\dogs \\mrk=4\\chased \\mrk=5\\butterflies.");
    ASSERT_TRUE(RunUntil(*engine, L"#1 Seven #2 brown #3 dogs #4 chased #5 butterflies. ."));
    EXPECT_GT(times[6], times[2] + 0.2);
    EXPECT_LT(times[6], times.back() - 0.2) << "not all at the end";
}

TEST_F(Dispatcher, BuiltInVoiceGoesOnWhenTheServiceIsKilledInMidSentence)
{
    const auto engine = Make(L"espeak-ng:German");
    Begin(*engine, kGerman);
    ASSERT_TRUE(RunUntil(*engine, L"#1 Die #2 Stra\u00DFe #3 "));
    const auto killed = steady_clock::now();
    service.Kill();
    ASSERT_TRUE(RunUntil(*engine, L"#1 Die #2 Stra\u00DFe #3 ist #4 "));
    EXPECT_LT(steady_clock::now() - killed, 2s);
    ASSERT_TRUE(RunUntil(*engine, kGermanTold));
    EXPECT_EQ(ToldBy(events), kGermanTold);

    // Started again it is used again.
    service.Start();
    ASSERT_EQ(service.Problem(), "");
    events.clear();
    times.clear();
    Begin(*engine, kGerman);
    ASSERT_TRUE(RunUntil(*engine, kGermanTold));
    EXPECT_EQ(ToldBy(events), kGermanTold);
}

TEST_F(Dispatcher, BuiltInVoiceGoesOnWhenTheModuleIsKilled)
{
    const auto engine = Make(L"espeak-ng:German");
    Begin(*engine, kGerman);
    ASSERT_TRUE(RunUntil(*engine, L"#1 Die #2 Stra\u00DFe #3 "));
    ASSERT_TRUE(service.KillModule("sd_espeak-ng"));
    ASSERT_TRUE(RunUntil(*engine, kGermanTold));
    EXPECT_EQ(ToldBy(events), kGermanTold);
}

TEST_F(Dispatcher, FrozenServiceHoldsUpNeitherTheCallerNorTheNextVoice)
{
    const auto engine = Make(L"espeak-ng:German");
    Begin(*engine, kGerman);
    ASSERT_TRUE(RunUntil(*engine, L"#1 Die #2 "));
    service.Freeze();
    const auto frozen = steady_clock::now();
    engine->Stop();
    EXPECT_TRUE(engine->SetMode(AllVoices().front().modeId).Ok());
    engine->Start(L"\\mrk=21\\Hello.");
    EXPECT_LT(steady_clock::now() - frozen, 100ms);
    events.clear();
    times.clear();
    EXPECT_TRUE(RunUntil(*engine, L"#21 Hello. ."));
    EXPECT_LT(steady_clock::now() - frozen, 4s);
    service.Thaw();
}

TEST_F(Dispatcher, WithoutAServiceThereAreNoVoices)
{
    service.Kill();
    const std::string path = std::getenv("PATH");
    setenv("PATH", "/nowhere", 1); // nor a program to start one
    EXPECT_TRUE(catalogue->All(15s).empty());
    EXPECT_EQ(catalogue->Find(L"{5D15BA7C-446E-8A70-B511-4E2D02E8824D}", 5s), nullptr);
    setenv("PATH", path.c_str(), 1);
}

} // namespace
} // namespace voxtrel::agent::voices
