#include "options/view/options_controls.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/panel.h>
#include <wx/statbox.h>

namespace voxtrel::options {
namespace {

wxSizer* MakeAppearance(wxWindow* page, OptionsControls& controls)
{
    wxStaticBoxSizer* const group = MakeGroup(page, "3937:Appearance");
    wxStaticBox* const box = group->GetStaticBox();
    wxFlexGridSizer* const rows = MakeRows(*page);
    AddListRow(*rows, box, "3930:&Character:", controls, DropDown::AgentList, "AgentList");
    AddListRow(*rows, box, "3931:&Size:", controls, DropDown::AgentSizeList, "AgentSizeList");
    group->Add(rows, wxSizerFlags().Expand().Border(wxALL, Gap(*page)));
    return group;
}

wxSizer* MakePlace(wxWindow* page, OptionsControls& controls)
{
    wxStaticBoxSizer* const group = MakeGroup(page, "3938:Place");
    wxStaticBox* const box = group->GetStaticBox();
    wxCheckBox* const hidden = MakeCheckBox(box, "visiblebox", "3932:&Keep the character off the screen");
    hidden->SetToolTip("3936:It is not seen, but goes on reading aloud");
    controls.Of(CheckBox::visiblebox) = hidden;
    group->Add(hidden, wxSizerFlags().Border(wxALL, Gap(*page)));
    wxFlexGridSizer* const rows = MakeRows(*page);
    AddListRow(*rows, box, "3933:&Beyond this corner:", controls, DropDown::positionlist, "positionlist");
    group->Add(rows, wxSizerFlags().Expand().Border(wxALL, Gap(*page)));
    return group;
}

wxSizer* MakeTests(wxWindow* page, OptionsControls& controls)
{
    wxStaticBoxSizer* const group = MakeGroup(page, "3939:Try it out");
    wxStaticBox* const box = group->GetStaticBox();
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    controls.Command3 = MakeButton(box, "Command3", "3934:Say a short &text");
    buttons->Add(controls.Command3, wxSizerFlags().Border(wxRIGHT, Gap(*page)));
    controls.Command5 = MakeButton(box, "Command5", "3935:Say a &longer text");
    buttons->Add(controls.Command5);
    group->Add(buttons, wxSizerFlags().Border(wxALL, Gap(*page)));
    return group;
}

} // namespace

wxPanel* MakeCharacterPage(wxWindow* tabs, OptionsControls& controls)
{
    auto* page = new wxPanel(tabs);
    auto* column = new wxBoxSizer(wxVERTICAL);
    const wxSizerFlags flags = wxSizerFlags().Expand().Border(wxALL, GroupGap(*page));
    column->Add(MakeAppearance(page, controls), flags);
    column->Add(MakePlace(page, controls), wxSizerFlags(flags).Border(wxLEFT | wxRIGHT, GroupGap(*page)));
    column->Add(MakeTests(page, controls), flags);
    page->SetSizer(column);
    return page;
}

} // namespace voxtrel::options
