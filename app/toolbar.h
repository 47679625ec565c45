#pragma once

#include "settings/view/wx_form.h"

#include <wx/bmpbuttn.h>
#include <wx/panel.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace voxtrel::app {

// One button of the toolbar: the key that names its action, its icon file and its designed tool tip.
struct ToolbarButtonDesign {
    std::string_view key;
    const char* icon;
    const char* toolTip;
};

inline constexpr std::array<ToolbarButtonDesign, 5> kToolbarButtons{{
    {"speakselected", "speak-selected.svg", "1002:Start speech"},
    {"speakall", "text-reader.svg", "1004:Open TextReader"},
    {"stopspeaking", "stop.svg", "1006:Stop speech"},
    {"openfile", "open-file.svg", "1008:Open text"},
    {"options", "options.svg", "1010:Open Speech Properties Panel"},
}};

// The row of buttons that fills the main window. Native buttons, so that the keyboard and screen readers reach them.
class Toolbar final : public wxPanel, public settings::ToolbarTexts {
public:
    // ButtonClick is called with the key of the clicked button.
    Toolbar(wxWindow* parent, const std::wstring& iconFolder, std::function<void(std::string_view)> ButtonClick);

    // A button's tool tip is its accessible name too.
    std::vector<settings::ButtonModel> Buttons() const override;
    void SetButtons(const std::vector<settings::ButtonModel>& buttons) override;

    // A button whose action is not part of this build is greyed.
    void EnableButton(std::string_view key, bool enabled);

private:
    void SetToolTipText(std::size_t index, const wxString& text);

    std::array<wxBitmapButton*, kToolbarButtons.size()> buttons_{};
};

} // namespace voxtrel::app
