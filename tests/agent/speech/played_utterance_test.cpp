#include "agent/speech/played_utterance.h"

#include "agent/speech/embedded_engine.h"
#include "agent/speech/speech_factory.h"
#include "agent/speech/voice_catalogue.h"
#include "engine_listener.h"
#include "scripted_engine.h"

#include <gtest/gtest.h>

#include <deque>
#include <sstream>
#include <thread>

namespace voxtrel::agent::speech {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using Kind = SpeechEvent::Kind;

// A player that needs no time to speak but for its last word, and tells what its script says.
struct PlayerScript {
    std::function<bool(std::size_t word)> tells = [](std::size_t) { return true; };
    std::chrono::milliseconds wordTakes{5};
    std::optional<std::size_t> diesIn; // the word of the first phrase
    bool endless = false;              // says nothing of the end

    std::atomic<int> made = 0, cancelled = 0;
    std::atomic<std::size_t> queuedAtOnce = 0;
    std::mutex mutex;
    std::vector<std::wstring> said;
};

class ScriptedPlayer : public VoicePlayer {
public:
    explicit ScriptedPlayer(std::shared_ptr<PlayerScript> script) : script_(std::move(script)) {}

    bool Queue(std::uint32_t number, const SystemVoice&, const Phrase& phrase) override
    {
        {
            const std::lock_guard lock(script_->mutex);
            script_->said.push_back(PhraseText(phrase));
        }
        ++phrases_;
        script_->queuedAtOnce = std::max(script_->queuedAtOnce.load(), phrases_);
        due_.push_back({.kind = PlayerEvent::Kind::Begin, .phrase = number});
        for (std::size_t word = 0; word < phrase.words.size(); ++word) {
            const bool dies = script_->diesIn == word;
            due_.push_back({.kind = dies ? PlayerEvent::Kind::Failed : PlayerEvent::Kind::Word,
                            .phrase = number,
                            .word = word});
        }
        if (!script_->endless)
            due_.push_back({.kind = PlayerEvent::Kind::End, .phrase = number});
        return true;
    }

    PlayerEvent Wait(std::chrono::milliseconds limit) override
    {
        if (due_.empty() || due_.front().kind == PlayerEvent::Kind::Failed) {
            std::this_thread::sleep_for(due_.empty() ? limit : 0ms);
            return due_.empty() ? PlayerEvent() : due_.front();
        }
        const PlayerEvent event = due_.front();
        due_.pop_front();
        if (event.kind == PlayerEvent::Kind::End)
            --phrases_;
        if (event.kind != PlayerEvent::Kind::Word)
            return event;
        std::this_thread::sleep_for(std::min(script_->wordTakes, limit)); // the sound of a word
        return script_->tells(event.word) ? event : PlayerEvent();
    }

    void Cancel() override
    {
        ++script_->cancelled;
        due_.clear();
    }

private:
    std::shared_ptr<PlayerScript> script_;
    std::deque<PlayerEvent> due_;
    std::size_t phrases_ = 0;
};

class PlayedVoice : public testing::Test {
protected:
    std::unique_ptr<SpeechEngine> Make()
    {
        VoiceFamily family = ScriptedFamily(std::make_shared<Script>());
        family.makeEngine = {};
        family.makePlayer = [script = script] {
            ++script->made;
            return std::make_unique<ScriptedPlayer>(script);
        };
        SpeechEngineOptions options;
        options.output = SpeechEngineOptions::Output::Silent;
        options.wake = bell.Ringer();
        options.systemVoices = std::make_shared<VoiceCatalogue>(std::vector{family});
        auto engine = MakeSpeechEngine(std::move(options));
        EXPECT_TRUE(engine->SetMode(ScriptedVoice()).Ok());
        return engine;
    }

    void Take(SpeechEngine& engine)
    {
        for (SpeechEvent& event : engine.TakeDueEvents())
            events.push_back(std::move(event));
    }

    bool RunToEnd(SpeechEngine& engine)
    {
        return bell.WaitFor([&] {
            Take(engine);
            return !engine.Speaking();
        });
    }

    std::shared_ptr<PlayerScript> script = std::make_shared<PlayerScript>();
    Bell bell;
    std::vector<SpeechEvent> events;
};

constexpr wchar_t kText[] =
    L"\\mrk=1\\eins \\mrk=2\\zwei \\mrk=3\\drei vierzig.\\mrk=4\\ \\mrk=5\\Und \\mrk=6\\Schluss.";
constexpr wchar_t kTold[] = L"#1 eins #2 zwei #3 drei vierzig. #4 #5 Und #6 Schluss. .";

TEST_F(PlayedVoice, TellsBookmarksAndWordsAsTheyAreHeard)
{
    const auto engine = Make();
    engine->Start(kText);
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(ToldBy(events), kTold);
    EXPECT_EQ(script->said, (std::vector<std::wstring>{L"eins zwei drei vierzig.", L"Und Schluss."}));
    EXPECT_EQ(script->queuedAtOnce, 2U) << "no gap between sentences";
}

TEST_F(PlayedVoice, LostMarksComeWithTheNextOne)
{
    script->tells = [](std::size_t word) { return word == 2; };
    const auto engine = Make();
    engine->Start(kText);
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(ToldBy(events), kTold);
}

TEST_F(PlayedVoice, WithoutAnyMarksThePaceIsGuessed)
{
    script->tells = [](std::size_t) { return false; };
    script->endless = true; // nothing but the guess can tell the words
    const auto engine = Make();
    const auto before = steady_clock::now();
    engine->Start(L"\\mrk=1\\eins \\mrk=2\\zweiundzwanzig \\mrk=3\\drei \\mrk=4\\vier.");
    ASSERT_TRUE(bell.WaitFor([&] {
        Take(*engine);
        return ToldBy(events) == L"#1 eins #2 zweiundzwanzig #3 drei #4 vier. ";
    }));
    EXPECT_GT(steady_clock::now() - before, 700ms) << "not all at once";
    EXPECT_LT(steady_clock::now() - before, 5s);
    engine->Stop();
}

TEST_F(PlayedVoice, PauseIsKeptBetweenPhrases)
{
    const auto engine = Make();
    const auto before = steady_clock::now();
    engine->Start(L"eins.\\pau=300\\\\mrk=1\\zwei.");
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(ToldBy(events), L"eins. #1 zwei. .");
    EXPECT_GE(steady_clock::now() - before, 300ms);
    EXPECT_EQ(script->queuedAtOnce, 1U);
}

TEST_F(PlayedVoice, StopSilencesThePlayerAtOnce)
{
    script->endless = true;
    const auto engine = Make();
    engine->Start(kText);
    ASSERT_TRUE(bell.WaitFor([&] {
        Take(*engine);
        return !events.empty();
    }));
    const auto before = steady_clock::now();
    engine->Stop();
    EXPECT_FALSE(engine->Speaking());
    ASSERT_TRUE(bell.WaitFor([&] { return script->cancelled == 1; }));
    EXPECT_LT(steady_clock::now() - before, 100ms);
    EXPECT_TRUE(engine->TakeDueEvents().empty());
}

TEST_F(PlayedVoice, BuiltInVoiceGoesOnFromTheLastMarkWhenThePlayerDies)
{
    script->diesIn = 2;
    const auto engine = Make();
    engine->Start(kText);
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(ToldBy(events), kTold);
    engine->Start(L"\\mrk=8\\Hello.");
    events.clear();
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(ToldBy(events), L"#8 Hello. .");
    EXPECT_EQ(script->made, 2) << "the next utterance tries again";
}

TEST_F(PlayedVoice, CannotBeWrittenToAFile)
{
    VoiceFamily family = ScriptedFamily(std::make_shared<Script>());
    family.makeEngine = {};
    VoiceCatalogue catalogue({family});
    std::ostringstream out;
    const Result refused =
        RenderToWav(L"Hi.", ScriptedVoice(), out, {}, {.voicePlaysOnly = L"it plays"}, &catalogue);
    EXPECT_EQ(refused.description, L"it plays");
}

} // namespace
} // namespace voxtrel::agent::speech
