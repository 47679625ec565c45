#include "hotkeys/hot_key_table.h"
#include "options/view/options_controls.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/panel.h>
#include <wx/stattext.h>

namespace voxtrel::options {
namespace {

constexpr const char* kActions[hotkeys::kHotKeyRows] = {
    "3971:&Speak the selection", "3972:Read the selection in the &Text Reader", "3973:Speak the &clipboard",
    "3974:Read the clipboard in the Text &Reader", "3975:Stop s&peaking"};

constexpr int kFirstFunctionKey = 2; // F2

wxChoice* MakeKeyList(wxWindow* page)
{
    wxChoice* const list = MakeChoice(page, "hotkeycombo");
    for (int key = 0; key < hotkeys::kListedKeys; ++key)
        list->Append(wxString::Format("F%d", kFirstFunctionKey + key));
    return list;
}

} // namespace

wxPanel* MakeHotKeysPage(wxWindow* tabs, OptionsControls& controls)
{
    auto* page = new wxPanel(tabs);
    const int gap = GroupGap(*page);
    auto* column = new wxBoxSizer(wxVERTICAL);
    auto* rows = new wxFlexGridSizer(3, gap, gap);
    rows->AddGrowableCol(0, 1);
    for (std::size_t index = 0; index < controls.hotkeycheck.size(); ++index) {
        controls.hotkeycheck[index] = MakeCheckBox(page, "hotkeycheck", kActions[index]);
        rows->Add(controls.hotkeycheck[index], wxSizerFlags().CenterVertical());
        rows->Add(MakeLabel(page, "3976:Ctrl +"), wxSizerFlags().CenterVertical());
        controls.hotkeycombo[index] = MakeKeyList(page);
        rows->Add(controls.hotkeycombo[index], wxSizerFlags().CenterVertical());
    }
    // Made last, so that it is no label of the first box.
    column->Add(MakeLabel(page, "3970:Hold Ctrl and press one of these keys in any program."),
                wxSizerFlags().Border(wxALL, gap));
    column->Add(rows, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, gap));
    page->SetSizer(column);
    return page;
}

} // namespace voxtrel::options
