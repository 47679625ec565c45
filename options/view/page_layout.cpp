#include "options/view/page_layout.h"

#include "options/view/options_controls.h"
#include "settings/view/wx_form.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/radiobut.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

namespace voxtrel::options {
namespace {

constexpr int kGap = 8; // device-independent pixels, as all here
constexpr int kGroupGap = 14;

wxString TextOf(const wxString& design) { return design.AfterFirst(':'); }

void MarkWithNumber(wxWindow& control, const wxString& design)
{
    settings::SetTag(control, design.BeforeFirst(':').ToStdWstring());
}

} // namespace

int Gap(const wxWindow& window) { return window.FromDIP(kGap); }

int GroupGap(const wxWindow& window) { return window.FromDIP(kGroupGap); }

wxStaticText* MakeLabel(wxWindow* parent, const wxString& design)
{
    auto* label = new wxStaticText(parent, wxID_ANY, TextOf(design));
    MarkWithNumber(*label, design);
    return label;
}

wxButton* MakeButton(wxWindow* parent, const char* name, const wxString& design)
{
    auto* button = new wxButton(parent, wxID_ANY, TextOf(design));
    button->SetName(name);
    MarkWithNumber(*button, design);
    return button;
}

wxCheckBox* MakeCheckBox(wxWindow* parent, const char* name, const wxString& design)
{
    auto* box = new wxCheckBox(parent, wxID_ANY, TextOf(design));
    box->SetName(name);
    MarkWithNumber(*box, design);
    return box;
}

wxChoice* MakeChoice(wxWindow* parent, const char* name)
{
    auto* choice = new wxChoice(parent, wxID_ANY);
    choice->SetName(name);
    return choice;
}

wxStaticBoxSizer* MakeGroup(wxWindow* parent, const wxString& design)
{
    auto* group = new wxStaticBoxSizer(wxVERTICAL, parent, TextOf(design));
    MarkWithNumber(*group->GetStaticBox(), design);
    return group;
}

wxFlexGridSizer* MakeRows(const wxWindow& window, int columns)
{
    auto* rows = new wxFlexGridSizer(columns, Gap(window), GroupGap(window));
    rows->AddGrowableCol(1, 1);
    return rows;
}

Labelled AddRow(wxFlexGridSizer& rows, wxWindow* parent, const wxString& design,
                const std::function<wxWindow*()>& make)
{
    wxStaticText* const label = MakeLabel(parent, design);
    wxWindow* const control = make();
    rows.Add(label, wxSizerFlags().CenterVertical());
    rows.Add(control, wxSizerFlags(1).Expand());
    return {label, control};
}

void AddListRow(wxFlexGridSizer& rows, wxWindow* parent, const wxString& design, OptionsControls& controls,
                DropDown list, const char* name)
{
    controls.labelled.push_back(
        AddRow(rows, parent, design, [&] { return controls.Of(list) = MakeChoice(parent, name); }));
}

void AddOptionGroup(wxStaticBoxSizer& sizer, OptionsControls& controls, OptionGroup group, const char* name,
                    const std::array<const char*, kOptionsOfAGroup>& designs)
{
    wxStaticBox* const box = sizer.GetStaticBox();
    const auto index = static_cast<std::size_t>(group);
    auto* const none =
        new wxRadioButton(box, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize, wxRB_GROUP);
    none->Hide();
    controls.noneOfGroup[index] = none;
    for (std::size_t i = 0; i < designs.size(); ++i) {
        auto* button = new wxRadioButton(box, wxID_ANY, TextOf(designs[i]));
        button->SetName(name);
        MarkWithNumber(*button, designs[i]);
        controls.groups[index][i] = button;
        sizer.Add(button, wxSizerFlags().Border(wxALL, Gap(*box) / 2));
    }
}

} // namespace voxtrel::options
