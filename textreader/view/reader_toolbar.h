#pragma once

#include "settings/view/wx_form.h"

#include <wx/anybutton.h>
#include <wx/bmpbndl.h>
#include <wx/menu.h>
#include <wx/panel.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class wxSizer;
class wxBitmapToggleButton;

namespace voxtrel::textreader {

// The buttons of the Text Reader. Native ones, each with a key that names its action; a tool tip is a
// button's accessible name too, unless it has another.
class ReaderToolbar final : public wxPanel, public settings::ToolbarTexts {
public:
    struct Actions {
        std::function<void(std::string_view key)> ButtonClick;
        // item counts from 0.
        std::function<void(std::string_view key, std::size_t item)> ButtonMenuClick;
        // Called before a menu opens, to mark what is chosen: the item, or nothing for none.
        std::function<std::size_t(std::string_view key)> Chosen;
    };

    ReaderToolbar(wxWindow* parent, const wxString& iconFolder, Actions actions);

    bool Pressed(std::string_view key) const;
    void SetPressed(std::string_view key, bool pressed);

    // The part of the button's picture that shows a colour, red in the low byte.
    void SetSwatch(std::string_view key, std::int32_t color);

    // For a button whose tool tip does not say what it is.
    void SetAccessibleName(std::string_view key, const wxString& name);

    std::vector<settings::ButtonModel> Buttons() const override;
    void SetButtons(const std::vector<settings::ButtonModel>& buttons) override;

private:
    struct Button {
        std::string_view key;
        wxAnyButton* control = nullptr; // owned by the panel
        wxString icon;
        std::unique_ptr<wxMenu> menu; // of a drop-down button
    };

    void MakeButtons(wxSizer& row, int group);
    void OpenMenu(Button& button);
    void Name(const Button& button, const wxString& name);
    Button& Find(std::string_view key);
    const Button& Find(std::string_view key) const;

    wxString iconFolder_;
    Actions actions_;
    std::vector<Button> buttons_;
};

} // namespace voxtrel::textreader
