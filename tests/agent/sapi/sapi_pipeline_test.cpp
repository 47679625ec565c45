// A SAPI voice beneath the whole pipeline: what the listener gets of it.

#include "agent/sapi/registered_voice.h"
#include "agent/sapi/test_voice.h"
#include "agent/speech/engine_listener.h"
#include "agent/speech/engine_synthesizer.h"
#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/rendering.h"
#include "agent/speech/voice_catalogue.h"
#include "agent/voices/sapi_engine.h"
#include "agent/voices/system_voices.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

namespace voxtrel::agent::voices {
namespace {

using namespace std::chrono_literals;
using namespace speech;
using Kind = SpeechEvent::Kind;
using tests::VoiceScript;

constexpr std::size_t kBytesAWord = 22050 * 2 / 5; // 200 ms
constexpr wchar_t kMarkup[] =
    L"\\mrk=1\\One \\mrk=2\\in \\mrk=3\\the \\mrk=4\\other \\mrk=5\\house.\\mrk=6\\";
constexpr wchar_t kTold[] = L"#1 One #2 in #3 the #4 other #5 house. #6 .";

std::vector<VoiceScript::Event> Bookmarks(std::initializer_list<std::size_t> words)
{
    std::vector<VoiceScript::Event> events;
    for (const std::size_t word : words)
        events.push_back({SPEI_TTS_BOOKMARK, word * kBytesAWord, std::to_wstring(word)});
    return events;
}

class SapiPipeline : public testing::Test {
protected:
    SapiPipeline()
    {
        registered.emplace(HKEY_LOCAL_MACHINE, L"Speech", L"VoxtrelTestPipeline");
        registered->Describe(L"Pipeline", L"409", L"Male");
        script.pieces = {5 * kBytesAWord};
        voice = catalogue.Find(VoiceModeId(kSapiCode, registered->Id()), 5s);
    }

    void Render()
    {
        ASSERT_TRUE(voice);
        UtteranceRenderer renderer(kMarkup, *voice, synthesizer, made);
        while (renderer.RenderClause()) {
        }
    }

    double MillisecondsOfMark(std::size_t index) const
    {
        return static_cast<double>(made.TimesOf(Kind::Bookmark).at(index)) * 1000 / kSampleRate;
    }

    VoiceScript script;
    tests::SapiStandIn standIn{script};
    std::optional<tests::RegisteredVoice> registered;
    VoiceCatalogue catalogue{{SapiFamily()}};
    const Voice* voice = nullptr;
    EngineSynthesizer synthesizer{std::make_unique<FliteSynthesizer>()};
    Rendering made;
};

TEST_F(SapiPipeline, BookmarksComeInOrderAtTheirSound)
{
    script.eventsOf = [](const std::wstring&) { return Bookmarks({0, 1, 2, 3, 4}); };
    Render();
    EXPECT_EQ(ToldBy(made.events), kTold);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_NEAR(MillisecondsOfMark(i), 200.0 * static_cast<double>(i), 30);
}

TEST_F(SapiPipeline, MergedWordsAndLostBookmarksLoseNoBookmarkOfTheText)
{
    script.eventsOf = [](const std::wstring& text) {
        std::vector<VoiceScript::Event> events = Bookmarks({0, 4});
        events.insert(events.begin() + 1, {SPEI_WORD_BOUNDARY, kBytesAWord, {}, text.find(L"in ")});
        return events;
    };
    Render();
    EXPECT_EQ(ToldBy(made.events), kTold);
    EXPECT_NEAR(MillisecondsOfMark(1), 200, 30);
    EXPECT_NEAR(MillisecondsOfMark(4), 800, 30);
}

TEST_F(SapiPipeline, BuiltInVoiceSaysTheRestWhenTheVoiceFailsInTheMiddle)
{
    // In the middle of the third word.
    script.eventsOf = [](const std::wstring&) { return Bookmarks({0, 1, 2}); };
    script.pieces = {2 * kBytesAWord + kBytesAWord / 2};
    script.result = E_FAIL;
    Render();
    EXPECT_EQ(ToldBy(made.events), kTold);
    EXPECT_NEAR(MillisecondsOfMark(1), 200, 30);
    EXPECT_GT(made.samples.size(), static_cast<std::size_t>(kSampleRate * 7 / 10));
}

TEST_F(SapiPipeline, BuiltInVoiceSpeaksForAVoiceThatHasBeenRemoved)
{
    registered.reset();
    Render();
    EXPECT_EQ(ToldBy(made.events), kTold);
    EXPECT_GT(made.samples.size(), static_cast<std::size_t>(kSampleRate / 2));
    EXPECT_TRUE(script.calls.empty());
}

} // namespace
} // namespace voxtrel::agent::voices
