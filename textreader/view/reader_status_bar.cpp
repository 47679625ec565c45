#include "textreader/view/reader_status_bar.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/statline.h>
#include <wx/stattext.h>

#include <utility>

namespace voxtrel::textreader {
namespace {

wxButton* AddSwitch(wxPanel* bar, const char* toolTip, std::function<void()> click)
{
    auto* button = new wxButton(bar, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                wxBORDER_NONE | wxBU_EXACTFIT);
    button->SetToolTip(toolTip);
    button->Bind(wxEVT_BUTTON, [click = std::move(click)](wxCommandEvent&) { click(); });
    return button;
}

} // namespace

ReaderStatusBar::ReaderStatusBar(wxWindow* parent, Actions actions)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, "StatusBar"),
      mode_(new wxStaticText(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                             wxST_ELLIPSIZE_END)),
      autoClose_(AddSwitch(this, "2908:Auto close ON/OFF", std::move(actions.AutoCloseClick))),
      blockHighlight_(AddSwitch(this, "2909:Block highlight ON/OFF", std::move(actions.BlockHighlightClick)))
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    const int gap = FromDIP(8);
    row->Add(mode_, wxSizerFlags(1).CenterVertical().Border(wxLEFT | wxRIGHT, gap));
    for (wxButton* button : {autoClose_, blockHighlight_}) {
        row->Add(new wxStaticLine(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLI_VERTICAL),
                 wxSizerFlags().Expand());
        row->Add(button, wxSizerFlags().CenterVertical().Border(wxLEFT | wxRIGHT, gap));
    }
    SetSizer(row);
}

void ReaderStatusBar::ShowMode(std::wstring_view text) { Show(*mode_, text); }

void ReaderStatusBar::ShowAutoClose(std::wstring_view text) { Show(*autoClose_, text); }

void ReaderStatusBar::ShowBlockHighlight(std::wstring_view text) { Show(*blockHighlight_, text); }

void ReaderStatusBar::Show(wxWindow& panel, std::wstring_view text)
{
    panel.SetLabel(wxString(text.data(), text.size()));
    Layout();
}

} // namespace voxtrel::textreader
