#pragma once

#include "settings/view/wx_form.h"

#include <wx/bmpbuttn.h>
#include <wx/panel.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::app {

// One button of a toolbar: the key that names its action, its icon file and its designed tool tip.
struct ToolbarButtonDesign {
    std::string_view key;
    const char* icon;
    const char* toolTip;
};

// The row of buttons that fills the main window. Native buttons, so that the keyboard and screen readers reach them.
class Toolbar final : public wxPanel, public settings::ToolbarTexts {
public:
    // ButtonClick is called with the key of the clicked button.
    Toolbar(wxWindow* parent, const std::vector<ToolbarButtonDesign>& designs, const std::wstring& iconFolder,
            std::function<void(std::string_view)> ButtonClick);

    // A button's tool tip is its accessible name too.
    std::vector<settings::ButtonModel> Buttons() const override;
    void SetButtons(const std::vector<settings::ButtonModel>& buttons) override;

    // index from 0.
    void SetToolTipText(std::size_t index, const wxString& text);

private:
    std::vector<wxBitmapButton*> buttons_; // owned by the panel
};

} // namespace voxtrel::app
