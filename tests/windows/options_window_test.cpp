#include "fakes/fake_character.h"
#include "fakes/fake_platform.h"
#include "options/view/frm_options.h"
#include "settings/memory_backend.h"
#include "settings/voice_table.h"

#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/display.h>
#include <wx/listbox.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/slider.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <set>
#include <string>

namespace voxtrel::options {
namespace {

// Handles events until the condition holds, for five seconds at most.
template <typename Condition> bool Until(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        wxTheApp->Yield(true);
        wxMilliSleep(5);
    }
    return true;
}

class OptionsWindow : public testing::Test {
protected:
    OptionsWindow()
    {
        settings::SeedVoiceTable(store);
        strings = settings::LoadStringTable(VOXTREL_STRINGS, L"en").table;
        agent::Ignore(server.Load(L"genie", L"genie.acs"));
        shared.character = server.Find(L"genie");
        shared.FavouriteAgent = L"genie";
        speech::LoadSettings(surroundings);
        hotkeys::LoadHotKeys(hotKeys, store);
    }

    ~OptionsWindow() override
    {
        if (window)
            window->Unload();
        wxTheApp->ProcessPendingEvents();
    }

    void Open()
    {
        window = new frmOptions(
            {.options = {store, shared, strings, folder, desktop, messages, hotKeys, characters},
             .access = access,
             .iconFolder = VOXTREL_ICONS,
             .helpFile = L"Help/helpfile.hlp",
             .unloaded = [this] { window = nullptr; }});
        window->ShowOptions();
        EXPECT_TRUE(Until([&] { return window->IsActive(); }));
        log.Clear();
    }

    void ForEachWindow(const std::function<void(wxWindow&)>& visit) const
    {
        const std::function<void(wxWindow*)> below = [&](wxWindow* parent) {
            for (wxWindow* child : parent->GetChildren()) {
                visit(*child);
                below(child);
            }
        };
        below(window);
    }

    // The control of this name; of several the one with this number.
    template <typename Control> Control& Find(const char* name, int number = 0) const
    {
        Control* found = nullptr;
        ForEachWindow([&](wxWindow& child) {
            auto* control = dynamic_cast<Control*>(&child);
            if (control && control->GetName() == name && number-- == 0)
                found = control;
        });
        EXPECT_TRUE(found) << name;
        return *found;
    }

    void ShowPage(std::size_t page)
    {
        Find<wxNotebook>("tabs").SetSelection(page);
        wxTheApp->Yield(true);
    }

    // Which of the controls that are seen have less room than they need; empty for none.
    std::string Clipped() const
    {
        std::string names;
        ForEachWindow([&](wxWindow& child) {
            if (!child.IsShownOnScreen() || dynamic_cast<wxNotebook*>(&child) ||
                dynamic_cast<wxPanel*>(&child))
                return;
            child.InvalidateBestSize();
            const wxSize needed = child.GetBestSize();
            const bool small =
                !child.GetLabel().empty() && (child.GetSize().x < needed.x || child.GetSize().y < needed.y);
            if (small || !wxRect(child.GetParent()->GetSize()).Contains(child.GetRect()))
                names += (child.GetName() + " \"" + child.GetLabel() + "\"; ").ToStdString(wxConvUTF8);
        });
        return names;
    }

    template <typename EventTag> void Tell(wxWindow& control, const EventTag& type)
    {
        wxCommandEvent event(type, control.GetId());
        event.SetEventObject(&control);
        control.GetEventHandler()->ProcessEvent(event);
    }
    void Click(const char* name) { Tell(Find<wxButton>(name), wxEVT_BUTTON); }
    void Choose(const char* name, const wxString& text, int number = 0)
    {
        auto& list = Find<wxChoice>(name, number);
        ASSERT_TRUE(list.SetStringSelection(text)) << text;
        Tell(list, wxEVT_CHOICE);
    }
    void Tick(const char* name, bool ticked, int number = 0)
    {
        auto& box = Find<wxCheckBox>(name, number);
        box.SetValue(ticked);
        Tell(box, wxEVT_CHECKBOX);
    }
    void Press(wxWindow& control, int key, wxEventType type = wxEVT_KEY_DOWN)
    {
        wxKeyEvent event(type);
        event.m_keyCode = key;
        event.SetEventObject(&control);
        control.GetEventHandler()->ProcessEvent(event);
    }

    tests::CallLog log;
    tests::FakeControl server{log};
    tests::FakeDesktop desktop{log};
    tests::FakeMessages messages{log};
    tests::FakeAccessibility access{log};
    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    settings::StringTable strings;
    settings::ProgramFolder folder{L"."};
    hotkeys::HotKeyTable hotKeys;
    speech::CharacterSurroundings surroundings{store, shared, desktop, access, messages, folder};
    speech::CharacterControl characters{server, surroundings, strings};
    frmOptions* window = nullptr; // destroyed by wx
};

enum Page { kCharacter, kBalloon, kVoice, kPronunciations, kHotKeys, kScreenReading };

TEST_F(OptionsWindow, TextsComeFromTheTableOnEveryPage)
{
    strings.Set(3920, L"Einstellungen");
    strings.Set(3923, L"Stimme");
    strings.Set(3930, L"&Figur:");
    strings.Set(3926, L"Gut");
    Open();
    EXPECT_EQ(window->GetTitle(), "Einstellungen");
    EXPECT_EQ(Find<wxNotebook>("tabs").GetPageText(kVoice), "Stimme");
    EXPECT_EQ(Find<wxButton>("ok_but").GetLabel(), "Gut");
    bool found = false;
    ForEachWindow([&](wxWindow& child) { found = found || child.GetLabel() == "&Figur:"; });
    EXPECT_TRUE(found);
}

TEST_F(OptionsWindow, NoTextIsLeftAsItWasDesigned)
{
    for (int number = 3000; number < 4000; ++number) {
        if (const auto text = strings.Find(number))
            strings.Set(number, L"~" + *text);
    }
    Open();
    ForEachWindow([&](wxWindow& child) {
        const bool shows = dynamic_cast<wxButton*>(&child) || dynamic_cast<wxCheckBox*>(&child) ||
                           dynamic_cast<wxStaticText*>(&child) || dynamic_cast<wxRadioButton*>(&child);
        const wxString label = child.GetLabel();
        const bool isValue = wxString("0123456789").Contains(label.Left(1));
        if (shows && !label.empty() && !isValue) {
            EXPECT_EQ(label[0], '~') << label;
        }
        if (!child.GetToolTipText().empty()) {
            EXPECT_EQ(child.GetToolTipText()[0], '~') << child.GetToolTipText();
        }
    });
}

TEST_F(OptionsWindow, MnemonicsOfAPageDifferFromEachOtherAndFromTheButtons)
{
    Open();
    const auto& tabs = Find<wxNotebook>("tabs");
    const auto mnemonic = [](const wxString& label) {
        const auto place = label.find('&');
        return place == wxString::npos ? wxString() : label.Mid(place + 1, 1).Upper();
    };
    for (std::size_t page = 0; page < tabs.GetPageCount(); ++page) {
        std::multiset<wxString> used;
        ForEachWindow([&](wxWindow& child) {
            if (tabs.GetPage(page)->IsDescendant(&child) || child.GetParent() == window)
                used.insert(mnemonic(child.GetLabel()));
        });
        used.erase(wxString());
        EXPECT_GE(used.size(), 3u);
        for (const wxString& letter : used)
            EXPECT_EQ(used.count(letter), 1u) << letter << " on page " << page;
    }
}

TEST_F(OptionsWindow, NothingIsClippedInALanguageAThirdLonger)
{
    for (int number = 3000; number < 4000; ++number) {
        if (const auto text = strings.Find(number))
            strings.Set(number, *text + std::wstring(text->size() / 3 + 1, L'm'));
    }
    Open();
    const auto& tabs = Find<wxNotebook>("tabs");
    for (std::size_t page = 0; page < tabs.GetPageCount(); ++page) {
        ShowPage(page);
        // The page is laid out once the screen has given it its size.
        EXPECT_TRUE(Until([&] { return Clipped().empty(); })) << Clipped();
    }
}

TEST_F(OptionsWindow, NothingIsClippedInALargeFontOfTheTranslation)
{
    strings.Set(20, L"DejaVu Serif");
    strings.Set(21, L"17");
    Open();
    const auto& tabs = Find<wxNotebook>("tabs");
    for (std::size_t page = 0; page < tabs.GetPageCount(); ++page) {
        ShowPage(page);
        EXPECT_TRUE(Until([&] { return Clipped().empty(); })) << Clipped();
    }
    EXPECT_EQ(Find<wxButton>("ok_but").GetFont().GetPointSize(), 17);
}

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

TEST_F(OptionsWindow, DetailsOfScreenReadingMakeTheDialogHigherWhileTheyAreOpen)
{
    shared.usescreenreading = true;
    Open();
    ShowPage(kScreenReading);
    ASSERT_TRUE(Until([&] { return Clipped().empty(); })) << Clipped();
    const int height = window->GetSize().y;
    Click("cmdDetails");
    EXPECT_GT(window->GetSize().y, height);
    EXPECT_TRUE(Until([&] { return Clipped().empty(); })) << Clipped();
    Click("cmdDetails");
    EXPECT_EQ(window->GetSize().y, height);
}

TEST_F(OptionsWindow, OpensInTheMiddleOfThePointersMonitor)
{
    Open();
    const int display = wxDisplay::GetFromPoint(wxGetMousePosition());
    ASSERT_NE(display, wxNOT_FOUND);
    const wxRect area = wxDisplay(static_cast<unsigned>(display)).GetClientArea();
    const auto isCentred = [&] {
        const wxRect place = window->GetScreenRect();
        // The window manager's frame may be counted or not.
        return area.Contains(place) && std::abs(place.x - area.x - (area.GetRight() - place.GetRight())) < 40;
    };
    EXPECT_TRUE(Until(isCentred)) << window->GetScreenRect().x << " on the monitor at " << area.x;
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
