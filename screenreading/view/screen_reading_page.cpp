#include "screenreading/view/screen_reading_page.h"

#include "platform/accessible_ticks.h"
#include "platform/focus.h"
#include "settings/string_numbers.h"
#include "settings/view/wx_form.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/checklst.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <utility>

namespace voxtrel::screenreading {
namespace {

namespace strings = settings::strings;

constexpr int kTickMs = 100;

template <class Control> Control* Tagged(Control* control, std::wstring_view number)
{
    settings::SetTag(*control, number);
    return control;
}

wxCheckBox* MakeCheckBox(wxWindow* parent, const char* name, const char* caption, std::wstring_view number,
                         const char* toolTip)
{
    auto* box = Tagged(new wxCheckBox(parent, wxID_ANY, caption), number);
    box->SetName(name);
    box->SetToolTip(toolTip);
    return box;
}

} // namespace

ScreenReadingPage::ScreenReadingPage(wxWindow* parent, const RolesPageServices& services,
                                     const settings::StringTable& strings,
                                     std::function<void()> heightChanged)
    : wxPanel(parent), page_(services), access_(services.access), strings_(strings),
      heightChanged_(std::move(heightChanged))
{
    Check_usescreenreading_ =
        MakeCheckBox(this, "Check_usescreenreading", "I would like to use Screen Reading", L"3407",
                     "3408:Select this box to use automatic Screen Reading");
    wxSizer* const roles = MakeRoles();
    cmdDetails_ = Tagged(new wxButton(this, wxID_ANY, "Details..."), L"3013");
    cmdDetails_->SetName("cmdDetails");
    details_ = MakeDetails();

    auto* page = new wxBoxSizer(wxVERTICAL);
    const int gap = FromDIP(8);
    page->Add(Check_usescreenreading_, wxSizerFlags().Border(wxALL, gap));
    page->Add(roles, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, gap));
    page->Add(cmdDetails_, wxSizerFlags().Right().Border(wxALL, gap));
    page->Add(details_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, gap));
    page->Hide(details_);
    SetSizer(page);
    BindHandlers();
}

wxSizer* ScreenReadingPage::MakeRoles()
{
    auto* prompt =
        Tagged(new wxStaticText(this, wxID_ANY, "Select items which you would like to be read"), L"3406");
    roleslist_ = new wxCheckListBox(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(220, 150)));
    roleslist_->SetName("roleslist");
    roleslist_->SetToolTip("3406:Select items which you would like to be read");
    auto* list = new wxBoxSizer(wxVERTICAL);
    list->Add(prompt, wxSizerFlags().Border(wxBOTTOM, FromDIP(4)));
    list->Add(roleslist_, wxSizerFlags(1).Expand());

    auto* choices = new wxBoxSizer(wxVERTICAL);
    const wxSizerFlags below = wxSizerFlags().Border(wxBOTTOM, FromDIP(8));
    choices->Add(Tagged(new wxStaticText(this, wxID_ANY, "For this type of object you can"), L"3401"), below);
    Check_name_ = MakeCheckBox(this, "Check_name", "Read &Basic Text", L"3409",
                               "3410:Select this box to have the name of an item spoken");
    Check_value_ = MakeCheckBox(this, "Check_value", "Read &Extra Information", L"3411",
                                "3412:Select this box to have the value of an item spoken");
    choices->Add(Check_name_, below);
    choices->Add(Check_value_, below);

    auto* both = new wxBoxSizer(wxHORIZONTAL);
    both->Add(list, wxSizerFlags(1).Expand());
    both->Add(choices, wxSizerFlags().Border(wxLEFT, FromDIP(16)));
    return both;
}

wxSizer* ScreenReadingPage::MakeDetails()
{
    struct Row {
        const char* label;
        const wchar_t* labelNumber;
        const char* text;
        const wchar_t* textNumber;
    };
    static constexpr Row kRows[] = {
        {"Your mouse is over this type of object ->", L"3009", "Window", L"3012"},
        {"Basic Text =", L"3010", "....", L"3016"},
        {"Extra Info =", L"3011", "....", L"3016"},
    };
    auto* frame = new wxStaticBoxSizer(wxVERTICAL, this, "Screen Reading Details");
    Tagged(frame->GetStaticBox(), L"3015");
    auto* rows = new wxFlexGridSizer(2, FromDIP(wxSize(8, 4)));
    rows->AddGrowableCol(1);
    for (std::size_t item = 0; item < lblDetails_.size(); ++item) {
        const Row& row = kRows[item];
        rows->Add(Tagged(new wxStaticText(frame->GetStaticBox(), wxID_ANY, row.label), row.labelNumber));
        // A long text is cut where the panel ends, for the eye only.
        lblDetails_[item] =
            Tagged(new wxStaticText(frame->GetStaticBox(), wxID_ANY, row.text, wxDefaultPosition,
                                    wxDefaultSize, wxST_ELLIPSIZE_END | wxST_NO_AUTORESIZE),
                   row.textNumber);
        lblDetails_[item]->SetName(wxString::Format("lblDetails%zu", item));
        rows->Add(lblDetails_[item], wxSizerFlags(1).Expand());
    }
    frame->Add(rows, wxSizerFlags().Expand().Border(wxALL, FromDIP(6)));
    return frame;
}

void ScreenReadingPage::BindHandlers()
{
    Check_usescreenreading_->Bind(wxEVT_CHECKBOX,
                                  [this](wxCommandEvent&) { Check_usescreenreading_Click(); });
    Check_name_->Bind(wxEVT_CHECKBOX,
                      [this](wxCommandEvent& event) { page_.Check_name_Click(event.IsChecked()); });
    Check_value_->Bind(wxEVT_CHECKBOX,
                       [this](wxCommandEvent& event) { page_.Check_value_Click(event.IsChecked()); });
    roleslist_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) {
        const int item = roleslist_->GetSelection();
        if (item == wxNOT_FOUND)
            return;
        page_.roleslist_ItemClick(static_cast<std::size_t>(item));
        ShowBoxes();
    });
    roleslist_->Bind(wxEVT_CHECKLISTBOX, [this](wxCommandEvent& event) {
        const int item = event.GetInt();
        page_.roleslist_ItemCheck(static_cast<std::size_t>(item),
                                  roleslist_->IsChecked(static_cast<unsigned>(item)));
        ShowBoxes();
    });
    cmdDetails_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { cmdDetails_Click(); });
    Timer1_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Timer1_Timer(); });
    Timer1_.Start(kTickMs);
}

void ScreenReadingPage::Form_Load()
{
    platform::SetAccessibleNameAndTicks(*roleslist_, roleslist_->GetToolTipText().ToStdWstring());
    page_.FillRolesList();
    ShowRoles();
    ShowBoxes();
    Check_usescreenreading_->SetValue(page_.Check_usescreenreading());
    platform::EnableInTabOrder(*cmdDetails_, page_.Check_usescreenreading());
}

void ScreenReadingPage::ShowRoles()
{
    roleslist_->Clear();
    for (const RolesPage::Role& role : page_.roleslist())
        roleslist_->Check(static_cast<unsigned>(roleslist_->Append(wxString(role.text))), role.ticked);
    if (page_.Selected())
        roleslist_->SetSelection(static_cast<int>(*page_.Selected()));
}

void ScreenReadingPage::ShowBoxes()
{
    Check_name_->SetValue(page_.Check_name());
    Check_value_->SetValue(page_.Check_value());
}

bool ScreenReadingPage::DetailsOpen() const { return cmdDetails_->GetLabel() != Text(strings::kDetails); }

void ScreenReadingPage::Check_usescreenreading_Click()
{
    const bool ticked = Check_usescreenreading_->IsChecked();
    // An open panel has no dots in its button's caption, so it stays open behind the disabled button.
    if (!ticked && cmdDetails_->GetLabel() == "Close Details...")
        cmdDetails_Click();
    page_.Check_usescreenreading_Click(ticked);
    platform::EnableInTabOrder(*cmdDetails_, ticked);
}

void ScreenReadingPage::cmdDetails_Click()
{
    const bool open = !DetailsOpen();
    cmdDetails_->SetLabel(Text(open ? strings::kCloseDetails : strings::kDetails));
    GetSizer()->Show(details_, open, true);
    InvalidateBestSize();
    if (heightChanged_)
        heightChanged_();
    Layout();
}

void ScreenReadingPage::Timer1_Timer()
{
    const auto texts = DetailsOf(access_);
    if (!texts)
        return;
    for (std::size_t item = 0; item < texts->size(); ++item) {
        const wxString text((*texts)[item]);
        if (lblDetails_[item]->GetLabelText() != text)
            lblDetails_[item]->SetLabelText(text);
    }
}

wxString ScreenReadingPage::Text(int number) const { return wxString(strings_.Text(number)); }

} // namespace voxtrel::screenreading
