// What the engine asks of a SAPI voice, and what it makes of the voice's sound and events.

#include "agent/sapi/registered_voice.h"
#include "agent/sapi/test_voice.h"
#include "agent/voices/sapi_engine.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace voxtrel::agent::voices {
namespace {

using speech::Phrase;
using speech::SystemVoice;
using tests::VoiceScript;

struct Word {
    std::int64_t sample;
    std::size_t word;
    friend bool operator==(const Word&, const Word&) = default;
};

class RecordingSink final : public speech::EngineSink {
public:
    bool Begin(int rate) override
    {
        sampleRate = rate;
        return wanted;
    }
    bool Samples(std::span<const std::int16_t> more) override
    {
        samples.insert(samples.end(), more.begin(), more.end());
        return samples.size() < enough;
    }
    bool Word(std::int64_t sample, std::size_t word) override
    {
        words.push_back({sample, word});
        return true;
    }
    bool Mouth(std::int64_t sample, acs::Mouth mouth) override
    {
        mouths.emplace_back(sample, mouth);
        return true;
    }

    bool wanted = true;
    std::size_t enough = 1'000'000;
    int sampleRate = 0;
    std::vector<std::int16_t> samples;
    std::vector<voices::Word> words;
    std::vector<std::pair<std::int64_t, acs::Mouth>> mouths;
};

class SapiEngineTest : public testing::Test {
protected:
    SapiEngineTest()
    {
        registered.Describe(L"Test", L"409", L"Male");
        voice.key = registered.Id();
        script.pieces = {400};
    }

    bool Speak(const Phrase& phrase) { return engine->Speak(voice, phrase, sink); }
    static Phrase InTheHouse() { return {{{L"In"}, {L"the"}, {L"house."}}, {}}; }

    VoiceScript script;
    tests::SapiStandIn standIn{script};
    tests::RegisteredVoice registered{HKEY_LOCAL_MACHINE, L"Speech", L"VoxtrelTestEngine"};
    SystemVoice voice;
    RecordingSink sink;
    std::unique_ptr<speech::VoiceEngine> engine = SapiFamily().makeEngine();
};

TEST_F(SapiEngineTest, AsksForTheVoiceItsRateAndTheWholeText)
{
    Phrase phrase{{{L"Say"}, {L"<it>"}}, {}};
    phrase.prosody.pitch = 200;
    phrase.prosody.speed = 250;
    EXPECT_TRUE(Speak(phrase));
    EXPECT_EQ(script.calls,
              (std::vector<std::wstring>{L"SetVoice " + voice.key, L"SetOutput 22050 16 1", L"SetRate 5",
                                         L"SetVolume 100",
                                         L"Speak <pitch absmiddle=\"10\"><bookmark mark=\"0\"/>Say "
                                         L"<bookmark mark=\"1\"/>&lt;it&gt;</pitch>"}));
}

TEST_F(SapiEngineTest, GivesAllSamplesInOrderWhateverPiecesTheyComeIn)
{
    script.pieces = {1, 2, 7, 1000, 3, 1, 2000};
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_EQ(sink.sampleRate, 22050);
    ASSERT_EQ(sink.samples.size(), 3014u / 2);
    for (std::size_t i = 0; i < sink.samples.size(); ++i)
        ASSERT_EQ(sink.samples[i], static_cast<std::int16_t>(i));
}

TEST_F(SapiEngineTest, BookmarksTellWhereTheWordsBegin)
{
    script.eventsOf = [](const std::wstring&) -> std::vector<VoiceScript::Event> {
        return {{SPEI_TTS_BOOKMARK, 0, L"0"}, {SPEI_TTS_BOOKMARK, 100, L"1"}, {SPEI_TTS_BOOKMARK, 300, L"2"}};
    };
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_EQ(sink.words, (std::vector<Word>{{0, 0}, {50, 1}, {150, 2}}));
}

TEST_F(SapiEngineTest, WordEventsStandInForLostBookmarks)
{
    script.eventsOf = [](const std::wstring& text) -> std::vector<VoiceScript::Event> {
        return {{SPEI_WORD_BOUNDARY, 0, {}, text.find(L"In")},
                {SPEI_TTS_BOOKMARK, 100, L"1"},
                {SPEI_WORD_BOUNDARY, 104, {}, text.find(L"the")},
                {SPEI_WORD_BOUNDARY, 300, {}, text.find(L"house")}};
    };
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_EQ(sink.words, (std::vector<Word>{{50, 1}, {0, 0}, {150, 2}}));
}

TEST_F(SapiEngineTest, EventForTwoWordsCountsForTheFirst)
{
    script.eventsOf = [](const std::wstring& text) -> std::vector<VoiceScript::Event> {
        return {{SPEI_WORD_BOUNDARY, 20, {}, text.find(L"In")},
                {SPEI_WORD_BOUNDARY, 300, {}, text.find(L"house")}};
    };
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_EQ(sink.words, (std::vector<Word>{{10, 0}, {150, 2}}));
}

TEST_F(SapiEngineTest, SenselessEventsAreLeftOut)
{
    script.eventsOf = [](const std::wstring&) -> std::vector<VoiceScript::Event> {
        return {{SPEI_TTS_BOOKMARK, 0, L"x"},  {SPEI_TTS_BOOKMARK, 0, L""},
                {SPEI_TTS_BOOKMARK, 0, L"99"}, {SPEI_TTS_BOOKMARK, 10, L"1"},
                {SPEI_TTS_BOOKMARK, 90, L"1"}, {SPEI_WORD_BOUNDARY, 300, {}, 1'000'000}};
    };
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_EQ(sink.words, (std::vector<Word>{{5, 1}, {150, 2}}));
}

TEST_F(SapiEngineTest, VisemesMoveTheMouth)
{
    script.eventsOf = [](const std::wstring&) -> std::vector<VoiceScript::Event> {
        return {{SPEI_VISEME, 0, {}, 0, 7}, {SPEI_VISEME, 200, {}, 0, 21}};
    };
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_EQ(sink.mouths, (std::vector<std::pair<std::int64_t, acs::Mouth>>{{0, acs::Mouth::Narrow},
                                                                             {100, acs::Mouth::Closed}}));
}

TEST_F(SapiEngineTest, FailureInTheMiddleIsToldAfterWhatWasSaid)
{
    script.eventsOf = [](const std::wstring&) -> std::vector<VoiceScript::Event> {
        return {{SPEI_TTS_BOOKMARK, 0, L"0"}};
    };
    script.result = E_FAIL;
    EXPECT_FALSE(Speak(InTheHouse()));
    EXPECT_EQ(sink.samples.size(), 200u);
    EXPECT_EQ(sink.words, (std::vector<Word>{{0, 0}}));
}

TEST_F(SapiEngineTest, VoiceThatDoesNotSpeakFails)
{
    script.speakResult = E_FAIL;
    EXPECT_FALSE(Speak(InTheHouse()));
}

TEST_F(SapiEngineTest, VoiceThatHasBeenRemovedFails)
{
    voice.key = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Speech\\Voices\\Tokens\\VoxtrelTestGone";
    EXPECT_FALSE(Speak(InTheHouse()));
}

TEST_F(SapiEngineTest, StopsSoonWhenNothingMoreIsWanted)
{
    script.goesOnForever = true;
    sink.enough = 1000;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
    EXPECT_EQ(script.calls.back(), L"Purge");

    // The next phrase has its own samples and events.
    script.goesOnForever = false;
    sink = {};
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_EQ(sink.samples.size(), 200u);
    EXPECT_EQ(script.made, 1);
}

TEST_F(SapiEngineTest, AnotherVoiceIsChosenForTheNextPhrase)
{
    tests::RegisteredVoice other(HKEY_LOCAL_MACHINE, L"Speech_OneCore", L"VoxtrelTestOther");
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_TRUE(Speak(InTheHouse()));
    voice.key = other.Id();
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_EQ(std::count(script.calls.begin(), script.calls.end(), L"SetVoice " + registered.Id()), 1);
    EXPECT_EQ(std::count(script.calls.begin(), script.calls.end(), L"SetVoice " + other.Id()), 1);
}

TEST_F(SapiEngineTest, NothingIsSaidThatIsNotWantedAtAll)
{
    sink.wanted = false;
    EXPECT_TRUE(Speak(InTheHouse()));
    EXPECT_NE(script.calls.back().substr(0, 5), L"Speak");
}

TEST_F(SapiEngineTest, EndReleasesTheVoice)
{
    EXPECT_TRUE(Speak(InTheHouse()));
    engine.reset();
    EXPECT_EQ(script.alive, 0);
}

TEST(SapiOfTheSystem, ThatCannotSpeakFailsWithoutHarm)
{
    tests::RegisteredVoice bare(HKEY_LOCAL_MACHINE, L"Speech", L"VoxtrelTestSilent");
    SystemVoice voice;
    voice.key = bare.Id(); // a voice without an engine
    RecordingSink sink;
    EXPECT_FALSE(SapiFamily().makeEngine()->Speak(voice, {{{L"Hello"}}, {}}, sink));
    EXPECT_TRUE(sink.samples.empty());
}

} // namespace
} // namespace voxtrel::agent::voices
