#include "options/view/options_controls.h"

#include "platform/focus.h"

#include <wx/button.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace voxtrel::options {
namespace {

constexpr int kListWidth = 180; // device-independent pixels, as the height
constexpr int kListHeight = 220;

wxSizer* MakeList(wxWindow* page, OptionsControls& controls)
{
    auto* column = new wxBoxSizer(wxVERTICAL);
    wxStaticText* const label = MakeLabel(page, "3977:&Words in the list:");
    controls.List1 =
        new wxListBox(page, wxID_ANY, wxDefaultPosition, page->FromDIP(wxSize(kListWidth, kListHeight)));
    controls.List1->SetName("List1");
    platform::FocusContent(*controls.List1);
    column->Add(label, wxSizerFlags().Border(wxBOTTOM, Gap(*page)));
    column->Add(controls.List1, wxSizerFlags(1).Expand());
    controls.labelled.push_back({label, controls.List1});
    return column;
}

wxSizer* MakeTexts(wxWindow* page, OptionsControls& controls)
{
    wxFlexGridSizer* const rows = MakeRows(*page);
    constexpr const char* kLabels[] = {"3978:Wr&itten:", "3979:Spo&ken:"};
    for (std::size_t i = 0; i < controls.txtSpeak.size(); ++i) {
        controls.labelled.push_back(AddRow(*rows, page, kLabels[i], [&] {
            // Enter is for the pronunciation, not for the dialog.
            return controls.txtSpeak[i] = new wxTextCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                                         wxDefaultSize, wxTE_PROCESS_ENTER);
        }));
        controls.txtSpeak[i]->SetName("txtSpeak");
    }
    return rows;
}

wxSizer* MakeButtons(wxWindow* page, OptionsControls& controls)
{
    controls.cmdSpeak = MakeButton(page, "cmdSpeak", "3980:H&ear");
    controls.pron_add = MakeButton(page, "pron_add", "3981:&Save");
    controls.Command2 = MakeButton(page, "Command2", "3982:&Delete");
    controls.Command4 = MakeButton(page, "Command4", "3983:&New");
    controls.importButton = MakeButton(page, "import", "3994:I&mport...");
    controls.exportButton = MakeButton(page, "export", "3995:E&xport...");
    auto* buttons = new wxGridSizer(2, Gap(*page), Gap(*page));
    for (wxButton* button : {controls.cmdSpeak, controls.pron_add, controls.Command4, controls.Command2,
                             controls.importButton, controls.exportButton})
        buttons->Add(button, wxSizerFlags().Expand());
    return buttons;
}

} // namespace

wxPanel* MakePronunciationsPage(wxWindow* tabs, OptionsControls& controls)
{
    auto* page = new wxPanel(tabs);
    const int gap = GroupGap(*page);
    // The boxes come first: who comes with a new word can type at once.
    auto* editing = new wxBoxSizer(wxVERTICAL);
    editing->Add(MakeTexts(page, controls), wxSizerFlags().Expand());
    editing->Add(MakeButtons(page, controls), wxSizerFlags().Expand().Border(wxTOP, gap));
    auto* halves = new wxBoxSizer(wxHORIZONTAL);
    halves->Add(editing, wxSizerFlags(1));
    halves->Add(MakeList(page, controls), wxSizerFlags(1).Expand().Border(wxLEFT, gap));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(MakeLabel(page, "3996:Type a word and how it should sound, listen to it, and save it."),
                wxSizerFlags().Border(wxALL, gap));
    column->Add(halves, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, gap));
    page->SetSizer(column);
    return page;
}

} // namespace voxtrel::options
