#include "screenreading/view/screen_reading_page.h"

#include "fakes/call_log.h"
#include "fakes/fake_platform.h"
#include "screenreading/role_table.h"
#include "settings/memory_backend.h"
#include "settings/view/wx_form.h"
#include "tests/windows/until.h"

#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/checklst.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/uiaction.h>

namespace voxtrel::screenreading {
namespace {

using tests::Until;

class ScreenReadingPageTest : public testing::Test {
protected:
    ScreenReadingPageTest()
    {
        store.SetApplicationName(L"Orvella");
        auto loaded = settings::LoadStringTable(VOXTREL_STRINGS, L"en");
        EXPECT_TRUE(loaded.problems.empty());
        strings = std::move(loaded.table);
        Store(L"push button ", L"name,value,");
        Store(L"link ", L"False");
        Store(L"slider ", L"value,");
    }
    ~ScreenReadingPageTest() override
    {
        if (dialog)
            dialog->Destroy();
        wxYield();
    }

    void Store(std::wstring_view role, std::wstring_view choice)
    {
        store.SaveSetting(kRolesSection, role, choice);
    }
    std::wstring Choice(std::wstring_view role) const { return store.GetSetting(kRolesSection, role); }

    // As the options dialog does it.
    void Open()
    {
        dialog = new wxDialog(nullptr, wxID_ANY, "Options", wxDefaultPosition, wxDefaultSize,
                              wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER);
        page = new ScreenReadingPage(dialog, {store, shared, access, folder}, strings, [this] {
            ++heightChanges;
            dialog->Fit();
        });
        settings::LocaliseForm(*dialog, strings);
        page->Form_Load();
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        sizer->Add(page, wxSizerFlags(1).Expand());
        dialog->SetSizerAndFit(sizer);
        dialog->Show();
        dialog->Raise();
        Until([this] { return dialog->IsActive(); });
    }

    template <class Control> Control& Get(const char* name)
    {
        auto* control = dynamic_cast<Control*>(wxWindow::FindWindowByName(name, page));
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    wxCheckListBox& List()
    {
        return *dynamic_cast<wxCheckListBox*>(wxWindow::FindWindowByName("roleslist", page));
    }

    void ClickOn(wxWindow& control)
    {
        wxCommandEvent event(wxEVT_BUTTON, control.GetId());
        event.SetEventObject(&control);
        control.HandleWindowEvent(event);
    }
    void TickBox(wxCheckBox& box, bool ticked)
    {
        box.SetValue(ticked);
        wxCommandEvent event(wxEVT_CHECKBOX, box.GetId());
        event.SetInt(ticked);
        event.SetEventObject(&box);
        box.HandleWindowEvent(event);
    }
    wxString Detail(int item)
    {
        return Get<wxStaticText>(("lblDetails" + std::to_string(item)).c_str()).GetLabelText();
    }

    tests::CallLog log;
    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    settings::StringTable strings;
    tests::FakeAccessibility access{log};
    settings::ProgramFolder folder{L"/program"};
    wxDialog* dialog = nullptr;
    ScreenReadingPage* page = nullptr;
    int heightChanges = 0;
};

TEST_F(ScreenReadingPageTest, ShowsTheTableInTheTextsOfTheStringTable)
{
    shared.usescreenreading = true;
    Open();
    ASSERT_EQ(List().GetCount(), 3u);
    EXPECT_EQ(List().GetString(0), "Push button ");
    EXPECT_TRUE(List().IsChecked(0));
    EXPECT_FALSE(List().IsChecked(1));
    EXPECT_TRUE(List().IsChecked(2));
    EXPECT_EQ(List().GetSelection(), 0);
    EXPECT_TRUE(Get<wxCheckBox>("Check_name").IsChecked());
    EXPECT_TRUE(Get<wxCheckBox>("Check_value").IsChecked());
    EXPECT_TRUE(Get<wxCheckBox>("Check_usescreenreading").IsChecked());
    EXPECT_TRUE(page->cmdDetails()->IsEnabled());
    EXPECT_EQ(Get<wxCheckBox>("Check_value").GetLabel(), "Read &Extra Information");
    EXPECT_EQ(Get<wxCheckBox>("Check_value").GetToolTipText(),
              "Select this box to have the value of an item spoken");
    EXPECT_EQ(List().GetToolTipText(), "Select items which you would like to be read");
    EXPECT_EQ(page->cmdDetails()->GetLabel(), "Details...");
    EXPECT_EQ(Detail(0), "Window");
    EXPECT_EQ(Detail(1), "....");
}

TEST_F(ScreenReadingPageTest, TheKeyboardSelectsAndTicks)
{
    Open();
    List().SetFocus();
    ASSERT_TRUE(Until([this] { return List().HasFocus(); }));
    wxUIActionSimulator keys;
    keys.Char(WXK_DOWN);
    keys.Char(WXK_DOWN);
    ASSERT_TRUE(Until([this] { return List().GetSelection() == 2; }));
    EXPECT_TRUE(Until([this] { return !Get<wxCheckBox>("Check_name").IsChecked(); }));
    EXPECT_TRUE(Get<wxCheckBox>("Check_value").IsChecked());
    EXPECT_EQ(Choice(L"slider "), L"value,") << "showing stores nothing";
    keys.Char(WXK_SPACE);
    ASSERT_TRUE(Until([this] { return Choice(L"slider ") == L"False"; }));
    EXPECT_FALSE(Get<wxCheckBox>("Check_value").IsChecked());
    keys.Char(WXK_SPACE);
    ASSERT_TRUE(Until([this] { return Choice(L"slider ") == L"name"; }));
    EXPECT_TRUE(Get<wxCheckBox>("Check_name").IsChecked());
    EXPECT_EQ(Choice(L"push button "), L"name,value,");
}

TEST_F(ScreenReadingPageTest, TabReachesEveryControlInItsOrder)
{
    shared.usescreenreading = true;
    Open();
    Get<wxCheckBox>("Check_usescreenreading").SetFocus();
    ASSERT_TRUE(Until([this] { return Get<wxCheckBox>("Check_usescreenreading").HasFocus(); }));
    wxUIActionSimulator keys;
    for (const char* name :
         {"roleslist", "Check_name", "Check_value", "cmdDetails", "Check_usescreenreading"}) {
        const wxWindow* const before = wxWindow::FindFocus();
        keys.Char(WXK_TAB);
        ASSERT_TRUE(Until([&] { return wxWindow::FindFocus() && wxWindow::FindFocus() != before; })) << name;
        EXPECT_EQ(wxWindow::FindFocus()->GetName(), name);
    }
}

TEST_F(ScreenReadingPageTest, AltAndALetterTickTheChoices)
{
    Open();
    Get<wxCheckBox>("Check_usescreenreading").SetFocus();
    ASSERT_TRUE(Until([this] { return Get<wxCheckBox>("Check_usescreenreading").HasFocus(); }));
    wxUIActionSimulator keys;
    keys.Char('B', wxMOD_ALT);
    ASSERT_TRUE(Until([this] { return Choice(L"push button ") == L"value,"; }));
    keys.Char('E', wxMOD_ALT);
    EXPECT_TRUE(Until([this] { return Choice(L"push button ") == L"false"; }));
}

TEST_F(ScreenReadingPageTest, TheMouseTicksARoleAndSelectsAnother)
{
    Open();
    int y = 0;
    ASSERT_TRUE(Until([&] { return List().HitTest(60, ++y) == 1; })) << "the upper edge of the second role";
    const auto clickAt = [&](int x) {
        wxUIActionSimulator mouse;
        mouse.MouseMove(List().ClientToScreen(wxPoint(x, y + List().GetCharHeight() / 2)));
        mouse.MouseClick();
    };
    clickAt(8); // its box
    ASSERT_TRUE(Until([this] { return Choice(L"link ") == L"name"; }));
    EXPECT_TRUE(List().IsChecked(1));
    clickAt(60); // its text
    ASSERT_TRUE(Until([this] { return List().GetSelection() == 1; }));
    EXPECT_TRUE(List().IsChecked(1));
    EXPECT_TRUE(Get<wxCheckBox>("Check_name").IsChecked());
    EXPECT_FALSE(Get<wxCheckBox>("Check_value").IsChecked());
}

TEST_F(ScreenReadingPageTest, BoxesStoreAtOnceForTheSelectedRole)
{
    Open();
    TickBox(Get<wxCheckBox>("Check_value"), false);
    EXPECT_EQ(Choice(L"push button "), L"name,");
    TickBox(Get<wxCheckBox>("Check_name"), false);
    EXPECT_EQ(Choice(L"push button "), L"false");
    EXPECT_TRUE(List().IsChecked(0));
}

TEST_F(ScreenReadingPageTest, TheSwitchStartsAndStopsAndEnablesTheDetails)
{
    Open();
    EXPECT_FALSE(page->cmdDetails()->IsEnabled());
    TickBox(Get<wxCheckBox>("Check_usescreenreading"), true);
    EXPECT_TRUE(shared.usescreenreading);
    EXPECT_TRUE(page->cmdDetails()->IsEnabled());
    EXPECT_EQ(log.Calls(),
              (std::vector<std::wstring>{L"StartServer " + folder.AccServer(), L"StartMonitoring"}));
}

TEST_F(ScreenReadingPageTest, DetailsOpenCloseAndStayOpenWhenSwitchedOff)
{
    shared.usescreenreading = true;
    Open();
    const int closed = dialog->GetSize().y;
    ClickOn(*page->cmdDetails());
    EXPECT_EQ(page->cmdDetails()->GetLabel(), "Close Details");
    EXPECT_TRUE(page->DetailsOpen());
    EXPECT_TRUE(Until([&] { return dialog->GetSize().y > closed; }));
    TickBox(Get<wxCheckBox>("Check_usescreenreading"), false);
    EXPECT_TRUE(page->DetailsOpen());
    EXPECT_FALSE(page->cmdDetails()->IsEnabled());
    TickBox(Get<wxCheckBox>("Check_usescreenreading"), true);
    ClickOn(*page->cmdDetails());
    EXPECT_FALSE(page->DetailsOpen());
    EXPECT_TRUE(Until([&] { return dialog->GetSize().y == closed; }));
    EXPECT_EQ(heightChanges, 2);
}

TEST_F(ScreenReadingPageTest, DetailsFollowThePointer)
{
    shared.usescreenreading = true;
    Open();
    ClickOn(*page->cmdDetails());
    access.role = L"link (visited) ";
    access.name = L"Terms & conditions ";
    access.value = L" ";
    EXPECT_TRUE(Until([this] { return Detail(1) == "Terms & conditions "; }));
    EXPECT_EQ(Detail(0), "link ");
    EXPECT_EQ(Detail(2), " ");
    access.role = access.name = access.value = L"";
    const int asked = access.timesAsked;
    ASSERT_TRUE(Until([&] { return access.timesAsked >= asked + 2; })) << "the panel asks at each tick";
    EXPECT_EQ(Detail(1), "Terms & conditions ");
}

// Run with letters of twice the size, too.
TEST_F(ScreenReadingPageTest, NothingIsCutWhenTheWordsAreAThirdLonger)
{
    for (const int number : {3401, 3406, 3407, 3409, 3411, 3013, 3014, 3009, 3010, 3011}) {
        const std::wstring text = strings.Text(number);
        strings.Set(number, text + text.substr(0, text.size() / 3));
    }
    shared.usescreenreading = true;
    Open();
    ClickOn(*page->cmdDetails());
    Until([this] { return page->GetSize().y >= page->GetBestSize().y; });
    for (wxWindow* control : page->GetChildren()) {
        const wxSize size = control->GetSize();
        const wxSize best = control->GetBestSize();
        EXPECT_GE(size.x, best.x) << control->GetName() << " " << control->GetLabel();
        EXPECT_GE(size.y, best.y) << control->GetName() << " " << control->GetLabel();
        EXPECT_TRUE(page->GetClientRect().Contains(control->GetRect())) << control->GetName();
        EXPECT_TRUE(control->IsShown()) << control->GetName();
    }
}

} // namespace
} // namespace voxtrel::screenreading
