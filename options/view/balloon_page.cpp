#include "options/view/balloon_preview.h"
#include "options/view/options_controls.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/statbox.h>

namespace voxtrel::options {
namespace {

wxSizer* MakeModes(wxWindow* page, OptionsControls& controls)
{
    wxStaticBoxSizer* const group = MakeGroup(page, "3940:What the balloon shows");
    AddOptionGroup(*group, controls, OptionGroup::showballoonbox, "showballoonbox",
                   {"3941:The &text", "3942:The text, but nothing for a single &word", "3943:&Nothing"});
    return group;
}

wxSizer* MakeStyle(wxWindow* page, OptionsControls& controls)
{
    wxStaticBoxSizer* const group = MakeGroup(page, "3944:How it behaves");
    wxStaticBox* const box = group->GetStaticBox();
    controls.Of(CheckBox::Check1) = MakeCheckBox(box, "Check1", "3945:&Disappear after speaking");
    controls.Of(CheckBox::Check2) = MakeCheckBox(box, "Check2", "3946:Show each word &as it is spoken");
    controls.Of(CheckBox::Check3) = MakeCheckBox(box, "Check3", "3947:Take the size &of the text");
    for (const CheckBox style : {CheckBox::Check1, CheckBox::Check2, CheckBox::Check3})
        group->Add(controls.Of(style), wxSizerFlags().Border(wxALL, Gap(*page) / 2));
    return group;
}

wxSizer* MakeLettering(wxWindow* page, OptionsControls& controls)
{
    wxStaticBoxSizer* const group = MakeGroup(page, "3948:Lettering");
    wxStaticBox* const box = group->GetStaticBox();
    wxFlexGridSizer* const rows = MakeRows(*page);
    AddListRow(*rows, box, "3949:&Font:", controls, DropDown::Fontlist, "Fontlist");
    AddListRow(*rows, box, "3950:Si&ze:", controls, DropDown::Sizelist, "Sizelist");
    group->Add(rows, wxSizerFlags().Expand().Border(wxALL, Gap(*page)));
    controls.preview = new BalloonPreview(box);
    group->Add(controls.preview, wxSizerFlags(1).Expand().Border(wxALL, Gap(*page)));
    return group;
}

} // namespace

wxPanel* MakeBalloonPage(wxWindow* tabs, OptionsControls& controls)
{
    auto* page = new wxPanel(tabs);
    auto* column = new wxBoxSizer(wxVERTICAL);
    const wxSizerFlags flags = wxSizerFlags().Expand().Border(wxALL, GroupGap(*page));
    column->Add(MakeModes(page, controls), flags);
    column->Add(MakeStyle(page, controls), wxSizerFlags(flags).Border(wxLEFT | wxRIGHT, GroupGap(*page)));
    column->Add(MakeLettering(page, controls), wxSizerFlags(flags).Proportion(1));
    page->SetSizer(column);
    return page;
}

} // namespace voxtrel::options
