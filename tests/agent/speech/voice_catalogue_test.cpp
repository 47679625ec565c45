#include "agent/speech/voice_catalogue.h"

#include "scripted_engine.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::speech {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

TEST(VoiceCatalogue, AsksNoEngineForBuiltInAndUnknownVoices)
{
    const auto script = std::make_shared<Script>();
    VoiceCatalogue catalogue({ScriptedFamily(script)});
    EXPECT_EQ(catalogue.Find(AllVoices()[2].modeId, 5s), &AllVoices()[2]);
    EXPECT_EQ(catalogue.Find(L"", 5s), nullptr);
    EXPECT_EQ(catalogue.Find(VoiceModeId(kScriptedCode + 1, L"tone"), 5s), nullptr);
    EXPECT_EQ(script->listed, 0);
}

TEST(VoiceCatalogue, FindsAVoiceInAnyCaseAndAsksOnce)
{
    const auto script = std::make_shared<Script>();
    VoiceCatalogue catalogue({ScriptedFamily(script)});
    const Voice* voice = catalogue.Find(ScriptedVoice(), 5s);
    ASSERT_NE(voice, nullptr);
    EXPECT_EQ(voice->name, L"tone, Scripted");
    EXPECT_FALSE(IsUnchecked(*voice));
    EXPECT_EQ(catalogue.Find(L"{5c419ed0" + ScriptedVoice().substr(9), 5s), voice);
    EXPECT_EQ(catalogue.Find(VoiceModeId(kScriptedCode, L"another"), 5s), nullptr);
    EXPECT_EQ(script->listed, 1);
}

TEST(VoiceCatalogue, ListsTheVoicesOfAllFamilies)
{
    const auto script = std::make_shared<Script>();
    script->keys = {L"a", L"b"};
    VoiceFamily other = ScriptedFamily(std::make_shared<Script>());
    other.code = 7;
    VoiceCatalogue catalogue({ScriptedFamily(script), other});
    const auto all = catalogue.All(5s);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].displayName, L"a, Scripted");
    EXPECT_EQ(all[2].key, L"tone");
}

TEST(VoiceCatalogue, ListingAgainForgetsVoicesThatWereRemoved)
{
    const auto script = std::make_shared<Script>();
    VoiceCatalogue catalogue({ScriptedFamily(script)});
    const Voice* voice = catalogue.Find(ScriptedVoice(), 5s);
    ASSERT_NE(voice, nullptr);
    script->keys = {L"new"};
    EXPECT_EQ(catalogue.All(5s).size(), 1U);
    EXPECT_EQ(catalogue.Find(ScriptedVoice(), 5s), nullptr);
    EXPECT_EQ(voice->name, L"tone, Scripted") << "somebody may still be speaking with it";
    EXPECT_NE(catalogue.Find(VoiceModeId(kScriptedCode, L"new"), 5s), nullptr);
}

TEST(VoiceCatalogue, TrustsAnEngineThatIsStillThinking)
{
    const auto script = std::make_shared<Script>();
    VoiceFamily slow = ScriptedFamily(script);
    slow.list = [script, list = slow.list] {
        std::unique_lock lock(script->mutex);
        script->changed.wait(lock, [&] { return script->released; });
        lock.unlock();
        return list();
    };
    VoiceCatalogue catalogue({slow});
    const auto before = steady_clock::now();
    const Voice* trusted = catalogue.Find(ScriptedVoice(), 20ms);
    EXPECT_LT(steady_clock::now() - before, 1s);
    ASSERT_NE(trusted, nullptr);
    EXPECT_TRUE(IsUnchecked(*trusted));
    EXPECT_EQ(catalogue.Find(ScriptedVoice(), 1ms), trusted);
    EXPECT_TRUE(catalogue.All(1ms).empty());

    script->Release();
    const Voice* voice = catalogue.Find(ScriptedVoice(), 5s);
    ASSERT_NE(voice, nullptr);
    EXPECT_FALSE(IsUnchecked(*voice));
}

} // namespace
} // namespace voxtrel::agent::speech
