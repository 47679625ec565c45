#include "fakes/fake_character.h"
#include "fakes/fake_platform.h"
#include "settings/memory_backend.h"
#include "tests/windows/until.h"
#include "textreader/view/frm_text_reader.h"

#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/display.h>
#include <wx/platinfo.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

namespace voxtrel::textreader {
namespace {

using tests::Until;

class TextReaderWindow : public testing::Test {
protected:
    TextReaderWindow()
    {
        shared.character = &character;
        strings.Set(2905, L"Reading in %s mode");
        strings.Set(2902, L"Auto close ON");
        strings.Set(2903, L"Auto close OFF");
        strings.Set(2906, L"Block highlight ON");
        strings.Set(2907, L"Block highlight OFF");
        strings.Set(2910, L"###This is a blank file.");
    }

    ~TextReaderWindow() override
    {
        if (window)
            window->Unload();
        wxTheApp->ProcessPendingEvents();
    }

    frmTextReader& Open(const std::wstring& text)
    {
        window = new frmTextReader({store, shared, strings, folder, desktop, messages, iconFolder,
                                    [this] { ++optionsShown; }, [this] { window = nullptr; }});
        window->ShowReader();
        window->SetText(text);
        Box().SetFocus();
        EXPECT_TRUE(Until([&] { return window->IsActive() && wxWindow::FindFocus() == &Box(); }));
        return *window;
    }

    wxTextCtrl& Box() const { return *FindControl<wxTextCtrl>(0); }

    template <typename Control> Control* FindControl(int number) const
    {
        Control* found = nullptr;
        const std::function<void(wxWindow*)> visit = [&](wxWindow* parent) {
            for (wxWindow* child : parent->GetChildren()) {
                if (auto* control = dynamic_cast<Control*>(child); control && !found && number-- == 0)
                    found = control;
                visit(child);
            }
        };
        visit(window);
        return found;
    }

    void Press(int key)
    {
        wxKeyEvent event(wxEVT_CHAR_HOOK);
        event.m_keyCode = key;
        event.SetEventObject(&Box());
        window->GetEventHandler()->ProcessEvent(event);
    }

    wxColour ColorAt(long position) const
    {
        wxTextAttr attr;
        Box().GetStyle(position, attr);
        return attr.GetTextColour();
    }

    wxButton* Panel(const wxString& label) const
    {
        for (int i = 0;; ++i) {
            wxButton* button = FindControl<wxButton>(i);
            if (!button || button->GetLabel() == label)
                return button;
        }
    }

    void Click(wxButton* button)
    {
        wxCommandEvent event(wxEVT_BUTTON, button->GetId());
        event.SetEventObject(button);
        button->GetEventHandler()->ProcessEvent(event);
    }

    tests::CallLog log;
    tests::FakeCharacter character{log};
    tests::FakeDesktop desktop{log};
    tests::FakeMessages messages{log};
    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    settings::StringTable strings;
    settings::ProgramFolder folder{L"."};
    std::wstring iconFolder = VOXTREL_ICONS;
    frmTextReader* window = nullptr; // destroyed by wx
    int optionsShown = 0;
};

const wxColour kBlue(0, 0, 255);
const wxColour kRed(255, 0, 0);

TEST_F(TextReaderWindow, FirstOpeningHasTheDesignedPlaceFontAndPanels)
{
    Open(L"");
    EXPECT_TRUE(shared.TextReaderOpen);
    EXPECT_EQ(Box().GetFont().GetFractionalPointSize(), 14);
    EXPECT_EQ(FindControl<wxStaticText>(0)->GetLabel(), "Reading in sentence mode");
    EXPECT_TRUE(Panel("Block highlight OFF"));
    EXPECT_TRUE(Panel("Auto close OFF"));
}

TEST_F(TextReaderWindow, ArrowKeysReadAndColourTheSection)
{
    Open(L"One two. Three\nfour. Five.");
    Press(WXK_DOWN);
    ASSERT_EQ(character.utterances.size(), 1u);
    EXPECT_EQ(ColorAt(0), kBlue);
    EXPECT_NE(ColorAt(9), kBlue);
    Press(WXK_RIGHT);
    EXPECT_NE(ColorAt(0), kBlue);
    EXPECT_EQ(ColorAt(9), kBlue);
    window->agent1_Bookmark(600010); // "Three" and the line break
    EXPECT_EQ(ColorAt(9), kRed);
    window->agent1_Bookmark(500017);
    EXPECT_EQ(ColorAt(15), kRed); // in the control the break is one character
    EXPECT_EQ(ColorAt(19), kRed);
    EXPECT_NE(ColorAt(20), kRed);
    Press(WXK_LEFT);
    EXPECT_EQ(ColorAt(0), kBlue);
    EXPECT_NE(ColorAt(15), kRed);
}

TEST_F(TextReaderWindow, UpArrowDoesNothing)
{
    Open(L"One two. Three.");
    Press(WXK_UP);
    EXPECT_TRUE(character.utterances.empty());
}

TEST_F(TextReaderWindow, WordModeMakesTheArrowsMoveWordByWord)
{
    store.SaveSetting(L"TextReader", L"ReadMode", L"word");
    Open(L"One two. Three.");
    EXPECT_EQ(FindControl<wxStaticText>(0)->GetLabel(), "Reading in word mode");
    Press(WXK_RIGHT);
    Press(WXK_RIGHT);
    EXPECT_NE(ColorAt(0), kBlue);
    EXPECT_EQ(ColorAt(4), kBlue);
    EXPECT_NE(ColorAt(9), kBlue);
}

TEST_F(TextReaderWindow, EscapeSilencesSavesAndUnloads)
{
    Open(L"One two.");
    shared.PendingSpeech = L"waiting";
    Press(WXK_ESCAPE);
    EXPECT_EQ(window, nullptr);
    EXPECT_FALSE(shared.TextReaderOpen);
    EXPECT_TRUE(shared.PendingSpeech.empty());
    EXPECT_EQ(log.Calls().back(), L"StopAll");
    EXPECT_EQ(store.GetSetting(L"TextReader", L"ReadMode"), L"sentence");
    EXPECT_EQ(store.GetSetting(L"TextReader", L"WordColor"), L"255");
    EXPECT_EQ(store.GetSetting(L"TextReader", L"BlockHighlight", L"unwritten"), L"unwritten");
}

TEST_F(TextReaderWindow, BlockHighlightIsWrittenAtOnceAutoCloseWhenUnloaded)
{
    Open(L"One two.");
    Click(Panel("Block highlight OFF"));
    EXPECT_TRUE(Panel("Block highlight ON"));
    EXPECT_EQ(store.GetSetting(L"TextReader", L"BlockHighlight"), L"True");
    Click(Panel("Auto close OFF"));
    EXPECT_TRUE(Panel("Auto close ON"));
    window->Unload();
    EXPECT_EQ(store.GetSetting(L"TextReader", L"AutoClose"), L"True");
}

TEST_F(TextReaderWindow, LayoutReturnsWhereItWasLeft)
{
    Open(L"");
    window->SetSize(210, 170, 620, 430);
    ASSERT_TRUE(Until([&] { return window->GetSize() == wxSize(620, 430); }));
    const wxRect left = window->GetRect();
    window->Unload();
    Open(L"");
    ASSERT_TRUE(Until([&] { return window->GetRect() == left; })) << window->GetRect().x << " " << left.x;
}

TEST_F(TextReaderWindow, LayoutIsWrittenWhileTheWindowIsOpen)
{
    Open(L"");
    window->SetSize(240, 150, 640, 420);
    EXPECT_TRUE(Until([&] { return store.GetSetting(L"TextReader", L"WindowWidth") == L"9600"; }));
}

TEST_F(TextReaderWindow, LayoutOfAScreenThatIsGoneComesBackToOneThatIsThere)
{
    store.SaveSetting(L"TextReader", L"WindowLeft", L"90000");
    store.SaveSetting(L"TextReader", L"WindowTop", L"-50000");
    Open(L"");
    EXPECT_TRUE(wxDisplay(0u).GetGeometry().Contains(window->GetRect()));
}

TEST_F(TextReaderWindow, EditsAreFollowedWhileReading)
{
    Open(L"One two three. Four.");
    Press(WXK_DOWN);
    Box().SetInsertionPoint(0);
    Box().WriteText("Well,\n");
    window->agent1_Bookmark(300005); // "two", seven characters further on, six in the control
    EXPECT_EQ(ColorAt(10), kRed);
    EXPECT_NE(ColorAt(9), kRed);
    EXPECT_NE(ColorAt(13), kRed);
}

TEST_F(TextReaderWindow, UndoTakesBackWhatWasTypedAndNotTheColours)
{
    frmTextReader& opened = Open(L"One two.");
    wxTextCtrl& box = Box();
    box.SetInsertionPointEnd();
    box.WriteText("typed");
    ASSERT_TRUE(Until([&] { return box.CanUndo() || wxPlatformInfo().GetPortId() == wxPORT_GTK; }));
    if (!box.CanUndo())
        GTEST_SKIP() << "the control has no Undo";
    opened.speakWindowText();
    opened.agent1_Bookmark(300001);
    box.Undo();
    EXPECT_EQ(box.GetValue(), "One two.");
}

TEST_F(TextReaderWindow, CaretOfTheUserIsWhereReadingBegins)
{
    Open(L"One two. Three four. Five.");
    Press(WXK_DOWN);
    window->agent1_Bookmark(300001);
    wxTheApp->Yield(true);
    Box().SetInsertionPoint(22);
    Press(WXK_DOWN);
    EXPECT_EQ(ColorAt(22), kBlue);
    EXPECT_NE(ColorAt(1), kBlue);
}

TEST_F(TextReaderWindow, EmptyFileIsToldAndLeavesTheText)
{
    Open(L"One two.");
    std::FILE* file = std::fopen("empty_file_of_the_window_test.txt", "w");
    ASSERT_TRUE(file);
    std::fclose(file);
    EXPECT_FALSE(window->OpenFile(L"empty_file_of_the_window_test.txt"));
    std::remove("empty_file_of_the_window_test.txt");
    EXPECT_EQ(log.Calls().back(), L"ShowInformation ###This is a blank file.");
    EXPECT_EQ(Box().GetValue(), "One two.");
}

TEST_F(TextReaderWindow, UnloadingWhileItsFileDialogIsOpenEndsTheDialog)
{
    if ((wxPlatformInfo::Get().GetOperatingSystemId() & wxOS_WINDOWS) != 0)
        GTEST_SKIP() << "only its user can end the system's own dialog";
    frmTextReader& opened = Open(L"One two.");
    opened.CallAfter([&opened] { opened.Unload(); });
    EXPECT_FALSE(opened.OpenTextFile());
    EXPECT_EQ(window, nullptr);
    EXPECT_FALSE(shared.TextReaderOpen);
}

TEST_F(TextReaderWindow, FileThatIsNoTextIsToldAndLeavesTheText)
{
    Open(L"One two.");
    std::FILE* file = std::fopen("binary_file_of_the_window_test.txt", "wb");
    ASSERT_TRUE(file);
    std::fwrite("a\0b\1\0\0c", 1, 7, file);
    std::fclose(file);
    EXPECT_FALSE(window->OpenFile(L"binary_file_of_the_window_test.txt"));
    std::remove("binary_file_of_the_window_test.txt");
    EXPECT_EQ(log.Calls().back().substr(0, 15), L"ShowExclamation");
    EXPECT_EQ(Box().GetValue(), "One two.");
}

TEST_F(TextReaderWindow, EndOfTheTextClosesTheWindowWithAutoClose)
{
    store.SaveSetting(L"TextReader", L"AutoClose", L"True");
    Open(L"One two.");
    window->speakWindowText();
    EXPECT_TRUE(window->closeTheWindow());
    window->agent1_Bookmark(kEndOfText);
    EXPECT_TRUE(Until([&] { return window == nullptr; }));
}

} // namespace
} // namespace voxtrel::textreader
