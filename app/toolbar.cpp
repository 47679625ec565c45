#include "app/toolbar.h"

#include "platform/accessible_name.h"

#include <wx/bmpbndl.h>
#include <wx/sizer.h>

namespace voxtrel::app {
namespace {

constexpr int kIconSize = 24; // device-independent pixels, as the gaps
constexpr int kButtonGap = 5; // wide enough for the window to show its title

} // namespace

Toolbar::Toolbar(wxWindow* parent, const std::vector<ToolbarButtonDesign>& designs,
                 const std::wstring& iconFolder, std::function<void(std::string_view)> ButtonClick)
    : wxPanel(parent)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    for (const ToolbarButtonDesign& design : designs) {
        const wxBitmapBundle icon = wxBitmapBundle::FromSVGFile(
            wxString(iconFolder) + wxFILE_SEP_PATH + design.icon, wxSize(kIconSize, kIconSize));
        auto* button = new wxBitmapButton(this, wxID_ANY, icon, wxDefaultPosition, wxDefaultSize,
                                          wxBU_AUTODRAW | wxBORDER_NONE);
        button->Bind(wxEVT_BUTTON, [ButtonClick, key = design.key](wxCommandEvent&) { ButtonClick(key); });
        buttons_.push_back(button);
        SetToolTipText(buttons_.size() - 1, design.toolTip);
        row->Add(button, wxSizerFlags().Border(wxLEFT | wxRIGHT, FromDIP(kButtonGap)));
    }
    SetSizerAndFit(row);
}

std::vector<settings::ButtonModel> Toolbar::Buttons() const
{
    std::vector<settings::ButtonModel> models;
    for (const wxBitmapButton* button : buttons_)
        models.push_back({button->GetToolTipText().ToStdWstring(), {}});
    return models;
}

void Toolbar::SetButtons(const std::vector<settings::ButtonModel>& buttons)
{
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        SetToolTipText(i, wxString(buttons.at(i).toolTipText));
}

void Toolbar::SetToolTipText(std::size_t index, const wxString& text)
{
    buttons_[index]->SetToolTip(text);
    platform::SetAccessibleName(*buttons_[index], text.ToStdWstring());
}

} // namespace voxtrel::app
