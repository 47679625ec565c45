#include "speech/character_settings.h"

#include "fakes/fake_character.h"
#include "fakes/fake_platform.h"
#include "fakes/recording_backend.h"
#include "settings/voice_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace voxtrel::speech {
namespace {

using Calls = std::vector<std::wstring>;
using Access = tests::RecordingBackend::Access;

constexpr bool kWindowsPaths = std::filesystem::path::preferred_separator == '\\';
constexpr wchar_t kFirstVoice[] = L"{CA141FD0-AC7F-11D1-97A3-006008273000}";

class CharacterSettings : public testing::Test {
protected:
    CharacterSettings()
    {
        store.SetApplicationName(L"Orvella");
        shared.character = &character;
    }

    void Load() { LoadSettings({store, shared, desktop, access, messages, folder}); }
    void LoadWith(std::wstring_view section, std::wstring_view key, std::wstring_view value)
    {
        store.SaveSetting(section, key, value);
        Load();
    }

    tests::CallLog log;
    tests::RecordingBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    tests::FakeCharacter character{log};
    tests::FakeDesktop desktop{log};
    tests::FakeAccessibility access{log};
    tests::FakeMessages messages{log};
    settings::ProgramFolder folder{kWindowsPaths ? L"C:\\Voxtrel" : L"/opt/voxtrel"};
};

using LoadSettingsTest = CharacterSettings;
using SaveSettingsTest = CharacterSettings;

TEST_F(LoadSettingsTest, GivesTheDefaultsOfAFirstRun)
{
    settings::SeedVoiceTable(store);
    Load();
    EXPECT_EQ(character.balloon.fontName, L"Arial");
    EXPECT_EQ(character.balloon.fontSize, 14);
    EXPECT_EQ(character.top, 100);
    EXPECT_EQ(character.left, 100);
    EXPECT_EQ(character.height, 128);
    EXPECT_EQ(character.width, 128);
    EXPECT_FALSE(character.soundEffects);
    EXPECT_EQ(character.mode, kFirstVoice);
    EXPECT_EQ(character.balloon.style, 1u + 4u + 8u);

    EXPECT_EQ(shared.SAPITags, L"");
    EXPECT_EQ(shared.interwordpause, 0);
    EXPECT_FALSE(shared.usescreenreading);
    EXPECT_EQ(shared.Pitch, 150);
    EXPECT_EQ(shared.Speed, 150);
    EXPECT_EQ(shared.Volume, 30000);
    EXPECT_EQ(shared.Agent_Position_List_Index, 1);
    EXPECT_EQ(shared.Agent_Size_IDX, 0);
    EXPECT_EQ(shared.Agent_Hidden, L"0");
    EXPECT_EQ(shared.Agent_User_Tags, L"");
    EXPECT_EQ(shared.Agent_Balloon_Para, L"0");
    EXPECT_EQ(shared.Agent_Balloon_Always, 1);
    EXPECT_EQ(shared.FavouriteAgent, L"genie");
    EXPECT_FALSE(shared.UseVoxtrel);
    EXPECT_TRUE(shared.autohide);
    EXPECT_TRUE(shared.autopace);
    EXPECT_FALSE(shared.autosize);
    EXPECT_EQ(shared.AgentVoice, L"Adult Male 1, US English");
    EXPECT_EQ(shared.VoiceType, L"");
    EXPECT_EQ(store.GetAllSettings(L"voices").size(), 8u);
}

TEST_F(LoadSettingsTest, AppliesItsStepsInOrder)
{
    Load();
    EXPECT_EQ(log.Calls(), (Calls{L"SoundEffectsOn False", L"StopMonitoring", L"FontName Arial",
                                  L"FontSize 14", L"Top 100", L"Left 100", L"Height 128", L"Width 128",
                                  std::wstring(L"TTSModeID ") + kFirstVoice, L"Style 13"}));
}

TEST_F(LoadSettingsTest, ReadsItsKeysInOrderUnderTheirOwnSpellings)
{
    Load();
    const std::vector<std::pair<std::wstring, std::wstring>> expected = {
        {L"Agent", L"SAPITags"},
        {L"speech", L"interwordpause"},
        {L"speech", L"usescreenreading"},
        {L"Agent", L"Font"},
        {L"Agent", L"FontSize"},
        {L"Agent", L"Top"},
        {L"Agent", L"Left"},
        {L"Agent", L"Pitch"},
        {L"Agent", L"speed"},
        {L"Agent", L"volume"},
        {L"Agent", L"Agent_Position_List_Index"},
        {L"Agent", L"Agent_Size_IDX"},
        {L"Agent", L"Agent_Hidden"},
        {L"Agent", L"Agent_User_Tags"},
        {L"Agent", L"Agent_Balloon_Para"},
        {L"Agent", L"Agent_Balloon_Always"},
        {L"Agent", L"FavouriteAgent"},
        {L"Speech", L"UseVoxtrel"},
        {L"agent", L"autohide"},
        {L"agent", L"autopace"},
        {L"agent", L"autosize"},
        {L"agent", L"AgentVoice"},
        {L"voices", L"Adult Male 1, US English"},
        {L"Agent", L"VoiceType"},
    };
    ASSERT_EQ(backend.reads.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(backend.reads[i], (Access{L"Orvella", expected[i].first, expected[i].second, L""})) << i;
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(LoadSettingsTest, StartsTheServerWithScreenReadingOn)
{
    LoadWith(L"speech", L"usescreenreading", L"true");
    EXPECT_TRUE(shared.usescreenreading);
    ASSERT_GE(log.Calls().size(), 3u);
    EXPECT_EQ(log.Calls()[1], kWindowsPaths ? L"StartServer C:\\Voxtrel\\ovaccserver.exe"
                                            : L"StartServer /opt/voxtrel/ovaccserver");
    EXPECT_EQ(log.Calls()[2], L"StartMonitoring");
    EXPECT_EQ(std::count(log.Calls().begin(), log.Calls().end(), L"StopMonitoring"), 0);
}

TEST_F(LoadSettingsTest, KnowsThreeSizes)
{
    const std::pair<const wchar_t*, long> sizes[] = {{L"0", 128},  {L"1", 85},     {L"2", 50},
                                                     {L"5", 128},  {L"-1", 128},   {L"x", 128},
                                                     {L"1.5", 50}, {L"99999", 128}};
    for (const auto& [stored, pixels] : sizes) {
        LoadWith(L"Agent", L"Agent_Size_IDX", stored);
        EXPECT_EQ(character.height, pixels);
        EXPECT_EQ(character.width, pixels);
    }
}

TEST_F(LoadSettingsTest, ParksOnlyForExactlyOne)
{
    for (const wchar_t* stored : {L"true", L"2", L"True", L" 1", L"1 ", L"01", L"-1", L""}) {
        LoadWith(L"Agent", L"Agent_Hidden", stored);
        EXPECT_EQ(character.top, 100);
        EXPECT_EQ(shared.Agent_Hidden, stored);
    }
    LoadWith(L"Agent", L"Agent_Hidden", L"1");
    EXPECT_EQ(character.top, -200);
}

struct ParkingCase {
    const wchar_t* index;
    long top;
    long left;
};

constexpr ParkingCase kParkingCases[] = {
    {L"0", -85, -85},  {L"1", -200, 1930}, {L"2", 1090, -200},  {L"3", 1090, 1930},   {L"4", 100, 100},
    {L"-1", 100, 100}, {L"1.5", 100, 100}, {L"none", -85, -85}, {L"1e300", 100, 100},
};

TEST_F(LoadSettingsTest, ParksAHiddenCharacterOutsideTheScreen)
{
    store.SaveSetting(L"Agent", L"Agent_Hidden", L"1");
    store.SaveSetting(L"Agent", L"Agent_Size_IDX", L"1");
    for (const auto& [index, top, left] : kParkingCases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(index)));
        LoadWith(L"Agent", L"Agent_Position_List_Index", index);
        EXPECT_EQ(character.top, top);
        EXPECT_EQ(character.left, left);
    }
}

TEST_F(LoadSettingsTest, ParksAllOfACharacterThatIsLargerOnThisScreen)
{
    character.resolution = 2;
    store.SaveSetting(L"Agent", L"Agent_Hidden", L"1");
    LoadWith(L"Agent", L"Agent_Position_List_Index", L"0");
    EXPECT_EQ(character.height, 128);
    EXPECT_EQ(character.top, -256);
    EXPECT_EQ(character.left, -256);
}

TEST_F(LoadSettingsTest, ReadsWhatIsNotNumericAsZero)
{
    for (const wchar_t* key : {L"Top", L"Left", L"FontSize", L"Pitch", L"speed", L"volume",
                               L"Agent_Position_List_Index", L"Agent_Size_IDX", L"Agent_Balloon_Always"})
        store.SaveSetting(L"Agent", key, L"Information");
    LoadWith(L"speech", L"interwordpause", L"0x10");
    EXPECT_EQ(character.top, 0);
    EXPECT_EQ(character.left, 0);
    EXPECT_EQ(character.balloon.fontSize, 0);
    EXPECT_EQ(shared.Pitch, 0);
    EXPECT_EQ(shared.Speed, 0);
    EXPECT_EQ(shared.Volume, 0);
    EXPECT_EQ(shared.Agent_Position_List_Index, 0);
    EXPECT_EQ(shared.Agent_Size_IDX, 0);
    EXPECT_EQ(shared.Agent_Balloon_Always, 0);
    EXPECT_EQ(shared.interwordpause, 0);
}

TEST_F(LoadSettingsTest, RoundsNumbersToTheirFields)
{
    store.SaveSetting(L"Agent", L"Pitch", L"40000");
    store.SaveSetting(L"Agent", L"Speed", L"-1e9");
    store.SaveSetting(L"Agent", L"Volume", L"65535.5");
    store.SaveSetting(L"Agent", L"Top", L"-12.5");
    LoadWith(L"Agent", L"Agent_Position_List_Index", L"2.25");
    EXPECT_EQ(shared.Pitch, 32767);
    EXPECT_EQ(shared.Speed, -32768);
    EXPECT_EQ(shared.Volume, 65536);
    EXPECT_EQ(character.top, -12);
    EXPECT_EQ(shared.Agent_Position_List_Index, 2.25);
}

TEST_F(LoadSettingsTest, TakesAStoredEmptyTextForAValue)
{
    store.SaveSetting(L"Agent", L"Font", L"");
    store.SaveSetting(L"agent", L"autohide", L"");
    store.SaveSetting(L"Agent", L"FavouriteAgent", L"");
    LoadWith(L"Agent", L"Pitch", L"");
    EXPECT_EQ(character.balloon.fontName, L"");
    EXPECT_FALSE(shared.autohide);
    EXPECT_EQ(shared.FavouriteAgent, L"");
    EXPECT_EQ(shared.Pitch, 0);
}

TEST_F(LoadSettingsTest, TakesTheFirstEngineForAVoiceThatIsNotListed)
{
    LoadWith(L"agent", L"AgentVoice", L"nobody");
    EXPECT_EQ(character.mode, kFirstVoice);
    EXPECT_EQ(shared.AgentVoice, L"nobody");
}

TEST_F(LoadSettingsTest, TellsOfAnUnavailableVoiceAndGoesOn)
{
    store.SaveSetting(L"voices", L"Strange", L"{00000000-0000-0000-0000-000000000000}");
    store.SaveSetting(L"Agent", L"VoiceType", L"\\chr=\"Whisper\"\\");
    store.SaveSetting(L"agent", L"autosize", L"True");
    LoadWith(L"agent", L"AgentVoice", L"strange");
    ASSERT_GE(log.Calls().size(), 2u);
    EXPECT_EQ(log.Calls()[log.Calls().size() - 2], L"ShowExclamation This voice is not available.");
    EXPECT_EQ(log.Calls().back(), L"Style 15");
    EXPECT_EQ(character.balloon.style, 15u);
    EXPECT_EQ(shared.VoiceType, L"\\chr=\"Whisper\"\\");
}

TEST_F(LoadSettingsTest, ShowsNoMessageWithoutADescription)
{
    character.voices.clear();
    character.unknownVoiceDescription.clear();
    Load();
    for (const std::wstring& call : log.Calls())
        EXPECT_FALSE(call.starts_with(L"ShowExclamation"));
}

TEST_F(LoadSettingsTest, KeepsTheOtherStyleBits)
{
    character.balloon.style = 0x02200001 + 2 + 4;
    store.SaveSetting(L"agent", L"autohide", L"False");
    LoadWith(L"agent", L"autopace", L"False");
    EXPECT_EQ(character.balloon.style, 0x02200001u);
}

TEST_F(LoadSettingsTest, GoesOnWhenEveryStepFails)
{
    character.failure = agent::Result::Failure(agent::ErrorCode::DataInvalid, L"out of order");
    character.balloon.failure = character.failure;
    LoadWith(L"Agent", L"VoiceType", L"style");
    EXPECT_EQ(shared.VoiceType, L"style");
    EXPECT_EQ(shared.FavouriteAgent, L"genie");
    EXPECT_EQ(std::count(log.Calls().begin(), log.Calls().end(), L"ShowExclamation out of order"), 1);
}

TEST_F(LoadSettingsTest, FillsTheRecordWithoutACharacter)
{
    shared.character = nullptr;
    LoadWith(L"Agent", L"Agent_Hidden", L"1");
    EXPECT_EQ(shared.Pitch, 150);
    EXPECT_EQ(log.Calls(), (Calls{L"StopMonitoring"}));
}

TEST_F(SaveSettingsTest, WritesInOrder)
{
    Load();
    shared.SAPITags = L"\\Rst\\";
    shared.interwordpause = 250;
    shared.usescreenreading = true;
    shared.autosize = true;
    shared.autohide = false;
    shared.Agent_Position_List_Index = 2.5;
    shared.Agent_User_Tags = L"tags";
    shared.Speed = -3;
    character.top = -200;
    character.left = 1930;
    character.balloon.fontName = L"Verdana";
    character.balloon.fontSize = 22;
    SaveSettings(store, shared);

    const std::vector<Access> expected = {
        {L"Orvella", L"Agent", L"Agent_Position_List_Index", L"2.5"},
        {L"Orvella", L"Agent", L"SAPITags", L"\\Rst\\"},
        {L"Orvella", L"speech", L"interwordpause", L"250"},
        {L"Orvella", L"speech", L"usescreenreading", L"True"},
        {L"Orvella", L"Agent", L"Top", L"-200"},
        {L"Orvella", L"Agent", L"Left", L"1930"},
        {L"Orvella", L"agent", L"autohide", L"False"},
        {L"Orvella", L"agent", L"autopace", L"True"},
        {L"Orvella", L"agent", L"autosize", L"True"},
        {L"Orvella", L"agent", L"AgentVoice", L"Adult Male 1, US English"},
        {L"Orvella", L"Agent", L"Agent_Size_IDX", L"0"},
        {L"Orvella", L"Agent", L"Font", L"Verdana"},
        {L"Orvella", L"Agent", L"FontSize", L"22"},
        {L"Orvella", L"Agent", L"FavouriteAgent", L"genie"},
        {L"Orvella", L"Agent", L"Agent_Balloon_Para", L"0"},
        {L"Orvella", L"Agent", L"Agent_Balloon_Always", L"1"},
        {L"Orvella", L"Agent", L"Agent_Hidden", L"0"},
        {L"Orvella", L"Agent", L"Agent_User_Tags", L"tags"},
        {L"Orvella", L"Agent", L"Pitch", L"150"},
        {L"Orvella", L"Agent", L"Speed", L"-3"},
        {L"Orvella", L"Agent", L"Volume", L"30000"},
    };
    EXPECT_EQ(backend.writes, expected);
}

TEST_F(SaveSettingsTest, IsReadBackThroughTheOtherSpellings)
{
    Load();
    shared.Speed = 170;
    shared.Volume = 40000;
    SaveSettings(store, shared);
    EXPECT_EQ(store.GetSetting(L"Agent", L"speed"), L"170");
    shared.Speed = 0;
    Load();
    EXPECT_EQ(shared.Speed, 170);
    EXPECT_EQ(shared.Volume, 40000);
}

TEST_F(SaveSettingsTest, KeepsAParkedCharacterParked)
{
    store.SaveSetting(L"Agent", L"Agent_Position_List_Index", L"3");
    LoadWith(L"Agent", L"Agent_Hidden", L"1");
    SaveSettings(store, shared);
    EXPECT_EQ(store.GetSetting(L"Agent", L"Top"), L"1090");
    character.top = 0;
    Load();
    EXPECT_EQ(character.top, 1090);
    EXPECT_EQ(character.left, 1930);
}

TEST_F(SaveSettingsTest, LeavesPositionAndFontAsStoredWithoutACharacter)
{
    store.SaveSetting(L"Agent", L"Top", L"5");
    Load();
    shared.character = nullptr;
    SaveSettings(store, shared);
    EXPECT_EQ(store.GetSetting(L"Agent", L"Top"), L"5");
    EXPECT_EQ(store.GetSetting(L"Agent", L"Font", L"missing"), L"missing");
    EXPECT_EQ(store.GetSetting(L"Agent", L"Pitch"), L"150");
}

} // namespace
} // namespace voxtrel::speech
