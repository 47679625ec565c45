// What the controls of the options dialog do.

#include "options_window_fixture.h"

#include <wx/listbox.h>
#include <wx/radiobut.h>
#include <wx/slider.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <chrono>
#include <cstdio>

namespace voxtrel::options {
namespace {

TEST_F(OptionsWindow, ShowsWhatIsSet)
{
    store.SaveSetting(L"Agent", L"Pitch", L"200");
    store.SaveSetting(L"Agent", L"VoiceType", L"\\chr=\"Monotone\"\\");
    store.SaveSetting(L"Agent", L"Agent_Balloon_Always", L"2");
    store.SaveSetting(L"hotkeys", L"1key", L"121");
    speech::LoadSettings(surroundings);
    hotkeys::LoadHotKeys(hotKeys, store);
    Open();
    EXPECT_EQ(Find<wxSlider>("pitchslider").GetValue(), 200);
    EXPECT_EQ(Find<wxStaticText>("Label1").GetLabel(), "200 (133 %)");
    EXPECT_TRUE(Find<wxRadioButton>("cr", 2).GetValue());
    EXPECT_TRUE(Find<wxRadioButton>("showballoonbox", 2).GetValue());
    EXPECT_EQ(Find<wxChoice>("hotkeycombo").GetStringSelection(), "F10");
    EXPECT_EQ(Find<wxChoice>("voicelist").GetStringSelection(), "Adult Male 1, US English");
    EXPECT_EQ(Find<wxChoice>("Sizelist").GetStringSelection(), "14");
}

TEST_F(OptionsWindow, ForeignBalloonModeSelectsNoButton)
{
    shared.Agent_Balloon_Always = 7;
    Open();
    for (int index = 0; index < 3; ++index)
        EXPECT_FALSE(Find<wxRadioButton>("showballoonbox", index).GetValue());
}

TEST_F(OptionsWindow, KeysMoveASliderByStepsForTheEar)
{
    Open();
    ShowPage(kVoice);
    auto& pitch = Find<wxSlider>("pitchslider");
    Press(pitch, WXK_RIGHT);
    EXPECT_EQ(shared.Pitch, 159);
    EXPECT_EQ(Find<wxStaticText>("Label1").GetLabel(), "159 (106 %)");
    Press(pitch, WXK_PAGEUP);
    EXPECT_EQ(shared.Pitch, 200);
    Press(pitch, WXK_HOME);
    EXPECT_EQ(shared.Pitch, 50);
    Press(pitch, WXK_LEFT);
    EXPECT_EQ(shared.Pitch, 50);
    Press(pitch, WXK_END);
    EXPECT_EQ(shared.Pitch, 400);
}

TEST_F(OptionsWindow, ControlsReachTheirHandlers)
{
    Open();
    Tick("Check1", false);
    EXPECT_FALSE(shared.autohide);
    Tick("Check3", true);
    EXPECT_TRUE(shared.autosize);
    Tick("visiblebox", true);
    EXPECT_EQ(shared.Agent_Hidden, L"1");
    Choose("positionlist", "Bottom Left");
    EXPECT_EQ(shared.Agent_Position_List_Index, 2);
    Choose("AgentSizeList", "Small");
    EXPECT_EQ(shared.Agent_Size_IDX, 2);
    Choose("Sizelist", "24");
    EXPECT_EQ(shared.character->GetBalloon().FontSize(), 24);
    Choose("voicelist", "Adult Female 2, US English");
    EXPECT_EQ(shared.AgentVoice, L"Adult Female 2, US English");
    Choose("hotkeycombo", "F10", 2);
    EXPECT_EQ(hotKeys.HotKeyCode[3], 121);
    Tick("hotkeycheck", false, 4);
    EXPECT_EQ(hotKeys.HotKeyEnabled[5], 0);
    auto& whisper = Find<wxRadioButton>("cr", 1);
    whisper.SetValue(true);
    Tell(whisper, wxEVT_RADIOBUTTON);
    EXPECT_EQ(shared.VoiceType, L"\\chr=\"Whisper\"\\");
    Click("cmdTestVoice");
    EXPECT_NE(shared.PendingSpeech.find(L"voice"), std::wstring::npos);
}

TEST_F(OptionsWindow, RefusedHotKeyGoesBackInTheList)
{
    Open();
    Choose("hotkeycombo", "F6", 1);
    EXPECT_EQ(Find<wxChoice>("hotkeycombo", 1).GetStringSelection(), "F4");
    EXPECT_NE(shared.PendingSpeech.find(L"hot"), std::wstring::npos);
}

TEST_F(OptionsWindow, OnlyTheControlsOfTheChosenPageCanBeReached)
{
    Open();
    EXPECT_TRUE(Find<wxChoice>("AgentList").IsShownOnScreen());
    EXPECT_FALSE(Find<wxChoice>("voicelist").IsShownOnScreen());
    ShowPage(kVoice);
    EXPECT_FALSE(Find<wxChoice>("AgentList").IsShownOnScreen());
    EXPECT_TRUE(Find<wxChoice>("voicelist").IsShownOnScreen());
    EXPECT_TRUE(Find<wxChoice>("voicelist").IsEnabled());
    EXPECT_FALSE(Find<wxButton>("cmdDetails").IsShownOnScreen());
    ShowPage(kScreenReading);
    EXPECT_TRUE(Find<wxButton>("cmdDetails").IsShownOnScreen());
}

TEST_F(OptionsWindow, TurningToThePronunciationsChoosesNone)
{
    store.SaveSetting(L"modify", L"world", L"wurld");
    shared.Agent_User_Tags = L"tagged";
    Open();
    ShowPage(kPronunciations);
    EXPECT_EQ(Find<wxTextCtrl>("txtSpeak").GetValue(), "tagged");
    EXPECT_EQ(Find<wxListBox>("List1").GetSelection(), wxNOT_FOUND);
}

TEST_F(OptionsWindow, FocusOfTheWordListKeepsWhatIsTyped)
{
    store.SaveSetting(L"modify", L"world", L"wurld");
    store.SaveSetting(L"modify", L"queue", L"kew");
    Open();
    ShowPage(kPronunciations);
    auto& list = Find<wxListBox>("List1");
    auto& written = Find<wxTextCtrl>("txtSpeak", 0);
    const auto focusList = [&] {
        written.SetFocus();
        ASSERT_TRUE(Until([&] { return written.HasFocus(); }));
        written.SetValue("half a wo");
        list.SetFocus();
        ASSERT_TRUE(Until([&] { return list.HasFocus(); }));
        wxTheApp->Yield(true);
        EXPECT_EQ(written.GetValue(), "half a wo");
        EXPECT_EQ(list.GetSelection(), wxNOT_FOUND);
    };
    focusList();
    // The same after an entry was added or deleted.
    Click("pron_add");
    focusList();
    list.SetSelection(0);
    Tell(list, wxEVT_LISTBOX);
    Click("Command2");
    focusList();
}

TEST_F(OptionsWindow, PronunciationsAreEditedByTheirControls)
{
    store.SaveSetting(L"modify", L"world", L"wurld");
    Open();
    ShowPage(kPronunciations);
    auto& list = Find<wxListBox>("List1");
    auto& written = Find<wxTextCtrl>("txtSpeak", 0);
    auto& spoken = Find<wxTextCtrl>("txtSpeak", 1);
    EXPECT_FALSE(Find<wxButton>("pron_add").IsEnabled());
    EXPECT_FALSE(Find<wxButton>("Command2").IsEnabled());
    list.SetSelection(0);
    Tell(list, wxEVT_LISTBOX);
    EXPECT_EQ(written.GetValue(), "world");
    EXPECT_EQ(spoken.GetValue(), "wurld");
    EXPECT_TRUE(Find<wxButton>("Command2").IsEnabled());
    written.SetValue("SQL");
    spoken.SetValue("sequel");
    Tell(spoken, wxEVT_TEXT_ENTER);
    EXPECT_EQ(list.GetCount(), 2u);
    EXPECT_TRUE(window) << "Enter is for the pronunciation, not for the dialog";
    EXPECT_EQ(store.GetSetting(L"modify", L"SQL"), L"sequel");
    list.SetSelection(0);
    Tell(list, wxEVT_LISTBOX);
    Click("Command2");
    EXPECT_EQ(list.GetStrings(), wxArrayString(1, wxString("SQL")));
    EXPECT_TRUE(written.IsEmpty());
}

TEST_F(OptionsWindow, TenThousandPronunciationsStayQuick)
{
    for (int i = 0; i < 10000; ++i)
        store.SaveSetting(L"modify", L"word" + std::to_wstring(i), L"sound " + std::to_wstring(i));
    using Clock = std::chrono::steady_clock;
    const auto seconds = [](Clock::time_point since) {
        return std::chrono::duration<double>(Clock::now() - since).count();
    };
    const auto opening = Clock::now();
    Open();
    ShowPage(kPronunciations);
    RecordProperty("opening", std::to_string(seconds(opening)));
    EXPECT_LT(seconds(opening), 3);
    Find<wxTextCtrl>("txtSpeak", 0).SetValue("one more");
    Find<wxTextCtrl>("txtSpeak", 1).SetValue("wan more");
    const auto adding = Clock::now();
    Click("pron_add");
    wxTheApp->Yield(true);
    EXPECT_LT(seconds(adding), 0.5);
    RecordProperty("adding", std::to_string(seconds(adding)));
    EXPECT_EQ(Find<wxListBox>("List1").GetCount(), 10001u);
    const auto deleting = Clock::now();
    Find<wxListBox>("List1").SetSelection(5000);
    Tell(Find<wxListBox>("List1"), wxEVT_LISTBOX);
    Click("Command2");
    wxTheApp->Yield(true);
    EXPECT_LT(seconds(deleting), 0.5);
    RecordProperty("deleting", std::to_string(seconds(deleting)));
    std::printf("opened in %s s, added in %s s\n", std::to_string(seconds(opening)).c_str(),
                std::to_string(seconds(deleting)).c_str());
}

TEST_F(OptionsWindow, OkSavesAndCloses)
{
    Open();
    Press(Find<wxSlider>("speedslider"), WXK_PAGEDOWN);
    Click("ok_but");
    EXPECT_EQ(window, nullptr);
    EXPECT_FALSE(shared.OptionsOpen);
    EXPECT_EQ(store.GetSetting(L"Agent", L"Speed"), L"123");
    EXPECT_EQ(store.GetSetting(L"hotkeys", L"1key"), L"114");
}

TEST_F(OptionsWindow, CancelClosesWithoutSaving)
{
    Open();
    Press(Find<wxSlider>("speedslider"), WXK_PAGEDOWN);
    Click("cancel_but");
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(store.GetSetting(L"Agent", L"Speed", L"unwritten"), L"unwritten");
    EXPECT_EQ(shared.Speed, 123);
}

TEST_F(OptionsWindow, ClosingTheWindowIsCancel)
{
    Open();
    window->wxDialog::Close();
    EXPECT_TRUE(Until([&] { return window == nullptr; }));
    EXPECT_FALSE(shared.OptionsOpen);
    EXPECT_EQ(store.GetSetting(L"Agent", L"Speed", L"unwritten"), L"unwritten");
}

TEST_F(OptionsWindow, HelpThatIsMissingIsTold)
{
    Open();
    Click("Command1");
    ASSERT_FALSE(log.Calls().empty());
    EXPECT_NE(log.Calls().back().find(L"manual.html"), std::wstring::npos);
}

} // namespace
} // namespace voxtrel::options
