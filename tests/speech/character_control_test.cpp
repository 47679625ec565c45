#include "speech/character_control.h"

#include "fakes/fake_character.h"
#include "fakes/fake_platform.h"
#include "fakes/recording_backend.h"
#include "settings/string_numbers.h"
#include "settings/voice_table.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace voxtrel::speech {
namespace {

using Calls = std::vector<std::wstring>;

constexpr bool kWindowsPaths = std::filesystem::path::preferred_separator == '\\';

class CharacterControlTest : public testing::Test {
protected:
    CharacterControlTest()
    {
        store.SetApplicationName(L"Orvella");
        settings::SeedVoiceTable(store);
        texts.Set(settings::strings::kTestVoice, L"voice?");
        texts.Set(settings::strings::kTestAppearance, L"look?");
        texts.Set(settings::strings::kTestLargeBalloon, L"more?");
        agent::Ignore(characters.LoadCharacter(L"genie"));
        LoadSettings(surroundings);
        log.Clear();
        backend.writes.clear();
    }

    static std::wstring PathOf(const std::wstring& name)
    {
        return kWindowsPaths ? L"C:\\Voxtrel\\characters\\" + name + L".acs"
                             : L"/opt/voxtrel/characters/" + name + L".acs";
    }
    tests::FakeCharacter& Current() { return *static_cast<tests::FakeCharacter*>(shared.character); }

    tests::CallLog log;
    tests::RecordingBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    tests::FakeDesktop desktop{log};
    tests::FakeAccessibility access{log};
    tests::FakeMessages messages{log};
    settings::ProgramFolder folder{kWindowsPaths ? L"C:\\Voxtrel" : L"/opt/voxtrel"};
    CharacterSurroundings surroundings{store, shared, desktop, access, messages, folder};
    tests::FakeControl control{log};
    settings::StringTable texts;
    CharacterControl characters{control, surroundings, texts};
};

TEST_F(CharacterControlTest, LoadsTheCharacterFromTheProgramsFolder)
{
    EXPECT_EQ(control.LoadedCount(), 1u);
    EXPECT_EQ(shared.character, control.FindFake(L"GENIE"));
}

TEST_F(CharacterControlTest, ChangesTheCharacterStepByStep)
{
    EXPECT_TRUE(characters.ChangeCharacter(L"robin", {2, L"Verdana", L"18 points"}).Ok());

    const Calls firstSteps = {L"Hide",       L"Unload genie", L"Load robin " + PathOf(L"robin"),
                              L"Height 50",  L"Width 50",     L"FontName Verdana",
                              L"FontSize 18"};
    ASSERT_GT(log.Calls().size(), firstSteps.size() + 1);
    EXPECT_EQ(Calls(log.Calls().begin(), log.Calls().begin() + 7), firstSteps);
    EXPECT_EQ(log.Calls()[7], L"SoundEffectsOn False"); // loading the settings begins
    EXPECT_EQ(log.Calls().back(), L"Show");

    EXPECT_EQ(control.LoadedCount(), 1u);
    EXPECT_EQ(shared.character, control.FindFake(L"robin"));
    EXPECT_EQ(shared.FavouriteAgent, L"robin");
    EXPECT_EQ(store.GetSetting(L"Agent", L"FavouriteAgent"), L"robin");
    EXPECT_EQ(store.GetSetting(L"Agent", L"Font"), L"Verdana");
    EXPECT_EQ(Current().balloon.fontSize, 18);
    EXPECT_TRUE(Current().visible);
}

TEST_F(CharacterControlTest, BringsTheOldCharacterBackWhenTheNewOneCannotBeLoaded)
{
    control.missingFiles.insert(PathOf(L"nobody"));
    const agent::Result changed = characters.ChangeCharacter(L"nobody", {2, L"Verdana", L"18"});
    EXPECT_EQ(changed.code, agent::ErrorCode::FileNotFound);
    EXPECT_EQ(shared.FavouriteAgent, L"genie");
    EXPECT_EQ(shared.character, control.FindFake(L"genie"));
    EXPECT_EQ(Current().height, 128);
    EXPECT_TRUE(Current().visible);
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(CharacterControlTest, GoesOnWithoutACharacterWhenNoneCanBeLoaded)
{
    control.missingFiles = {PathOf(L"nobody"), PathOf(L"genie")};
    EXPECT_FALSE(characters.ChangeCharacter(L"nobody", {0, L"Arial", L"14"}).Ok());
    EXPECT_EQ(shared.character, nullptr);
    characters.ChangeSize(2);
    characters.TestVoice();
    agent::Ignore(characters.ChangeVoice(L"Adult Male 2, US English"));
    EXPECT_EQ(control.LoadedCount(), 0u);
}

TEST_F(CharacterControlTest, ShrinksToSmallAndDrawsAttention)
{
    characters.ChangeSize(2);
    EXPECT_EQ(log.Calls(),
              (Calls{L"Height 50", L"Width 50", L"Play getattention", L"Play getattentionreturn", L"Show"}));
    EXPECT_EQ(shared.Agent_Size_IDX, 2);
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(CharacterControlTest, KnowsTheSizeTable)
{
    EXPECT_EQ(CharacterPixels(0), 128);
    EXPECT_EQ(CharacterPixels(1), 85);
    EXPECT_EQ(CharacterPixels(2), 50);
    EXPECT_EQ(CharacterPixels(3), 128);
    EXPECT_EQ(CharacterPixels(-1), 128);
}

TEST_F(CharacterControlTest, ChangesTheVoiceByItsListedEngine)
{
    EXPECT_TRUE(characters.ChangeVoice(L"Adult Female 2, US English").Ok());
    EXPECT_EQ(Current().mode, L"{CA141FD0-AC7F-11D1-97A3-006008273007}");
    EXPECT_EQ(shared.AgentVoice, L"Adult Female 2, US English");
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(CharacterControlTest, KeepsTheNameOfAVoiceThatCannotBeUsed)
{
    store.SaveSetting(L"voices", L"Strange", L"{0}");
    EXPECT_EQ(characters.ChangeVoice(L"Strange").code, agent::ErrorCode::VoiceNotAvailable);
    EXPECT_EQ(shared.AgentVoice, L"Strange");
    EXPECT_EQ(Current().mode, L"{CA141FD0-AC7F-11D1-97A3-006008273000}");
}

TEST_F(CharacterControlTest, StoresTheVoiceStyleAtOnce)
{
    characters.ChangeVoiceStyle(1);
    EXPECT_EQ(shared.VoiceType, L"\\chr=\"Whisper\"\\");
    EXPECT_EQ(store.GetSetting(L"Agent", L"VoiceType"), L"\\chr=\"Whisper\"\\");
    characters.ChangeVoiceStyle(2);
    EXPECT_EQ(store.GetSetting(L"Agent", L"VoiceType"), L"\\chr=\"Monotone\"\\");
    characters.ChangeVoiceStyle(0);
    EXPECT_EQ(store.GetSetting(L"Agent", L"VoiceType"), L"\\chr=\"Normal\"\\");
    characters.ChangeVoiceStyle(3);
    EXPECT_EQ(shared.VoiceType, L"\\chr=\"Normal\"\\");
}

TEST_F(CharacterControlTest, SilencesBeforeEachTestTextAndQueuesIt)
{
    const std::pair<void (CharacterControl::*)(), const wchar_t*> tests[] = {
        {&CharacterControl::TestVoice, L"voice"},
        {&CharacterControl::TestAppearance, L"look"},
        {&CharacterControl::TestLargeBalloon, L"more"},
    };
    for (const auto& [test, word] : tests) {
        log.Clear();
        shared.PendingSpeech.clear();
        (characters.*test)();
        EXPECT_EQ(log.Calls(), (Calls{L"StopAll"}));
        EXPECT_NE(shared.PendingSpeech.find(word), std::wstring::npos);
    }
}

TEST_F(CharacterControlTest, QueuesTwoRequestsForOneUtterance)
{
    characters.TestVoice();
    characters.TestAppearance();
    const std::size_t first = shared.PendingSpeech.find(L"voice");
    const std::size_t second = shared.PendingSpeech.find(L"look");
    EXPECT_NE(first, std::wstring::npos);
    EXPECT_NE(second, std::wstring::npos);
    EXPECT_LT(first, second);
    EXPECT_TRUE(Current().utterances.empty());
}

} // namespace
} // namespace voxtrel::speech
