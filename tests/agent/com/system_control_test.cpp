// The driver against a control that is reached over COM like the real one: what it is asked, and what becomes
// of its failures.

#include "agent/com/driver_fixture.h"
#include "fakes/fake_platform.h"
#include "settings/memory_backend.h"
#include "settings/voice_table.h"
#include "speech/character_control.h"
#include "speech/character_settings.h"

#include <memory>

namespace voxtrel::tests {
namespace {

using agent::ErrorCode;
using agent::Result;

class SystemControlTest : public DriverTest {
protected:
    SystemControlTest()
    {
        store.SetApplicationName(L"Orvella");
        settings::SeedVoiceTable(store);
    }

    void LoadSettings() { speech::LoadSettings({store, shared, desktop, access, messages, folder}); }

    CallLog log;
    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    FakeDesktop desktop{log};
    FakeAccessibility access{log};
    FakeMessages messages{log};
    settings::ProgramFolder folder{L"C:\\Voxtrel"};
};

TEST_F(SystemControlTest, IsConnectedBeforeAnythingElseAndLoadsByPath)
{
    EXPECT_TRUE(agent::SystemControlIsRegistered());
    agent::MadeControl made = MakeControl();
    ASSERT_TRUE(made.control);
    EXPECT_TRUE(made.control->Load(L"genie", file).Ok());
    EXPECT_EQ(Calls(),
              (Lines{L"Create", L"Connected = True", L"Characters.Load \"genie\" \"" + file + L"\""}));
    EXPECT_NE(made.control->Find(L"GENIE"), nullptr);
    EXPECT_EQ(made.control->Find(L"other"), nullptr);
}

TEST_F(SystemControlTest, StartUpAppliesTheSettingsInTheirOrder)
{
    shared.character = &Genie();
    LoadSettings();
    EXPECT_TRUE(shared.character->Show().Ok());
    EXPECT_EQ(Calls(), (Lines{L"genie.SoundEffectsOn = False", L"genie.Balloon.FontName = \"Arial\"",
                              L"genie.Balloon.FontSize = 14", L"genie.Top = 100", L"genie.Left = 100",
                              L"genie.Height = 128", L"genie.Width = 128",
                              L"genie.TTSModeID = \"{CA141FD0-AC7F-11D1-97A3-006008273000}\"",
                              L"genie.Balloon.Style?", L"genie.Balloon.Style = 35389453", L"genie.Show"}));
    EXPECT_EQ(log.Calls(), std::vector<std::wstring>{L"StopMonitoring"}); // no message box
    EXPECT_TRUE(shared.character->Visible());
}

TEST_F(SystemControlTest, UnknownVoiceGivesTheControlsOwnWordsAndTheRestIsApplied)
{
    shared.character = &Genie();
    store.SaveSetting(L"voices", L"Somebody", L"{00000000-0000-0000-0000-000000000001}");
    store.SaveSetting(L"agent", L"AgentVoice", L"Somebody");
    store.SaveSetting(L"agent", L"autosize", L"True");
    LoadSettings();
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"StopMonitoring",
                                                      L"ShowExclamation This voice is not installed here."}));
    EXPECT_EQ(Calls().back(), L"genie.Balloon.Style = 35389455");
}

TEST_F(SystemControlTest, HiddenCharacterIsParkedByItsOwnSize)
{
    shared.character = &Genie();
    store.SaveSetting(L"Agent", L"Agent_Hidden", L"1");
    store.SaveSetting(L"Agent", L"Agent_Position_List_Index", L"0");
    LoadSettings();
    EXPECT_EQ(shared.character->Top(), -128);
    EXPECT_EQ(shared.character->Left(), -128);
}

TEST_F(SystemControlTest, SavingReadsPlaceAndFontFromTheCharacter)
{
    shared.character = &Genie();
    LoadSettings();
    EXPECT_TRUE(shared.character->SetTop(-7).Ok());
    EXPECT_TRUE(shared.character->GetBalloon().SetFontName(L"Verdana").Ok());
    speech::SaveSettings(store, shared);
    EXPECT_EQ(store.GetSetting(L"Agent", L"Top"), L"-7");
    EXPECT_EQ(store.GetSetting(L"Agent", L"Left"), L"100");
    EXPECT_EQ(store.GetSetting(L"Agent", L"Font"), L"Verdana");
    EXPECT_EQ(store.GetSetting(L"Agent", L"FontSize"), L"14");
}

TEST_F(SystemControlTest, SizeChangePlaysTheTwoAnimationsAndShows)
{
    shared.character = &Genie();
    const settings::StringTable texts;
    speech::CharacterControl characters(*control, {store, shared, desktop, access, messages, folder}, texts);
    characters.ChangeSize(2);
    EXPECT_EQ(Calls(), (Lines{L"genie.Height = 50", L"genie.Width = 50", L"genie.Play \"getattention\"",
                              L"genie.Play \"getattentionreturn\"", L"genie.Show"}));
}

TEST_F(SystemControlTest, MarkupReachesTheControlUnchanged)
{
    agent::Character& genie = Genie();
    const std::wstring markup =
        L"\\Spd=150\\\\Pit=150\\\\Vol=30000\\  \\map=\"w\u00FCrld\"=\"w|\u20AC\"\\ \U0001F600 C:\\temp\\x &";
    EXPECT_TRUE(genie.Speak(markup).Ok());
    EXPECT_EQ(Calls(), Lines{L"genie.Speak \"" + markup + L"\""});
    const std::wstring longText(2'000'000, L'a');
    EXPECT_TRUE(genie.Speak(longText).Ok());
    EXPECT_TRUE(Calls() == Lines{L"genie.Speak \"" + longText + L"\""});
}

TEST_F(SystemControlTest, StyleKeepsItsUppermostBit)
{
    agent::Balloon& balloon = Genie().GetBalloon();
    EXPECT_TRUE(balloon.SetStyle(0x801C000Du).Ok());
    EXPECT_EQ(balloon.Style(), 0x801C000Du);
    EXPECT_EQ(Calls().front(), L"genie.Balloon.Style = -2145648627");
}

TEST_F(SystemControlTest, PropertiesAreReadFromTheControl)
{
    agent::Character& genie = Genie();
    EXPECT_EQ(genie.Height(), 160);
    EXPECT_EQ(genie.Width(), 160);
    EXPECT_TRUE(genie.SoundEffectsOn());
    EXPECT_FALSE(genie.Visible());
    EXPECT_EQ(genie.TTSModeID(), L"");
    EXPECT_EQ(genie.GetBalloon().FontName(), L"Designed");
    EXPECT_EQ(genie.GetBalloon().FontSize(), 8);
    EXPECT_EQ(genie.GetBalloon().Style(), 0x021C000Du);
}

TEST_F(SystemControlTest, PropertyThatCannotBeReadIsAsItWasLast)
{
    agent::Character& genie = Genie();
    EXPECT_TRUE(genie.SetTop(42).Ok());
    server.Fail(L"genie.Top?", static_cast<HRESULT>(0x80042001), L"gone");
    EXPECT_EQ(genie.Top(), 42);
}

TEST_F(SystemControlTest, FailureCarriesTheNumberAndTheWordsOfTheException)
{
    agent::Character& genie = Genie();
    server.Fail(L"genie.Play", static_cast<HRESULT>(0x80042003), L"No such animation here.");
    const Result played = genie.Play(L"wave");
    EXPECT_EQ(played.code, ErrorCode::NoSuchAnimation);
    EXPECT_EQ(played.description, L"No such animation here.");
}

TEST_F(SystemControlTest, FailureWithoutExceptionTakesTheThreadsErrorInformation)
{
    agent::Character& genie = Genie();
    server.FailPlainly(L"genie.Play", static_cast<HRESULT>(0x8004200A), L"It is hidden.");
    const Result played = genie.Play(L"wave");
    EXPECT_EQ(played.code, ErrorCode::CharacterHidden);
    EXPECT_EQ(played.description, L"It is hidden.");
}

TEST_F(SystemControlTest, FailureWithoutAnyWordsHasASentence)
{
    agent::Character& genie = Genie();
    server.Fail(L"genie.Show", static_cast<HRESULT>(0x80042402), nullptr);
    EXPECT_EQ(genie.Show().description, L"The character control reports the error 0x80042402.");
    server.FailPlainly(L"genie.Hide", static_cast<HRESULT>(0x80042402), L"");
    EXPECT_EQ(genie.Hide().description, L"The character control reports the error 0x80042402.");
}

TEST_F(SystemControlTest, ControlThatCannotBeMadeSaysWhy)
{
    server.Fail(L"Connected =", static_cast<HRESULT>(0x80042502), L"The server could not be started.");
    const agent::MadeControl made = MakeControl();
    EXPECT_FALSE(made.control);
    EXPECT_EQ(made.result.description, L"The server could not be started.");

    server.Reset();
    server.FailPlainly(L"Create", E_OUTOFMEMORY, L"");
    EXPECT_FALSE(MakeControl().control);
    EXPECT_FALSE(MakeControl().result.description.empty());
}

TEST_F(SystemControlTest, FailedLoadFreesTheIdentifier)
{
    control = MakeControl().control;
    const Result missing = control->Load(L"genie", L"C:\\no such file.acs");
    EXPECT_EQ(missing.code, ErrorCode::FileNotFound);
    EXPECT_EQ(missing.description, L"There is no such file.");
    EXPECT_EQ(control->Find(L"genie"), nullptr);
    EXPECT_TRUE(control->Load(L"genie", file).Ok());
    EXPECT_EQ(control->Load(L"Genie", file).code, ErrorCode::CharacterAlreadyLoaded);
}

TEST_F(SystemControlTest, NewCharacterStandsWhereTheLastOneStood)
{
    agent::Character& genie = Genie();
    EXPECT_TRUE(genie.SetTop(300).Ok());
    EXPECT_TRUE(genie.SetLeft(-20).Ok());
    EXPECT_TRUE(control->Unload(L"Genie").Ok());
    EXPECT_EQ(control->Find(L"genie"), nullptr);
    EXPECT_TRUE(control->Load(L"merlin", file).Ok());
    EXPECT_EQ(control->Find(L"merlin")->Top(), 300);
    EXPECT_EQ(control->Find(L"merlin")->Left(), -20);
    EXPECT_EQ(control->Unload(L"genie").code, ErrorCode::CharacterIdNotValid);
}

TEST_F(SystemControlTest, EndUnloadsAndReleasesEverything)
{
    EXPECT_TRUE(Genie().Speak(L"Hello \\mrk=5\\").Ok());
    RunAll();
    ForgetCalls();
    control.reset();
    EXPECT_EQ(Calls(), Lines{L"Characters.Unload \"genie\""});
    EXPECT_EQ(server.ObjectsAlive(), 0);
}

} // namespace
} // namespace voxtrel::tests
