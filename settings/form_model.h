#pragma once

#include "settings/string_table.h"

#include <string>
#include <vector>

// A window and its controls as localisation sees them: the texts, and where the number of each text stands. A
// window's adapter fills the model from the real controls, has it localised and puts the texts back.
namespace voxtrel::settings {

struct FontModel {
    std::wstring name;
    double size = 0; // points
};

struct ColumnHeaderModel {
    std::wstring tag;
    std::wstring text;
};

struct ButtonModel {
    std::wstring toolTipText;
    std::vector<std::wstring> buttonMenus; // the texts of the drop-down entries
};

struct ControlModel {
    std::wstring typeName; // "Label", "Menu", "Toolbar", "ListView", "TextBox" or any other
    std::wstring tag;
    std::wstring caption;
    std::wstring text;
    std::wstring toolTipText;
    std::optional<FontModel> font; // nothing for a control without one
    std::vector<ButtonModel> buttons;
    std::vector<ColumnHeaderModel> columnHeaders;
};

struct FormModel {
    std::wstring tag;
    std::wstring caption;
    FontModel font;
    std::vector<ControlModel> controls; // in the window's order
};

// Puts the texts of the table in place. A number is the leading numeric value of a tag or of the text itself
// ("1101:Show &Speech Options"); what has none, or one without a text, stays as it was designed. With text 20
// the window and every control get that font, in the size of text 21.
void LocaliseForm(FormModel& form, const StringTable& table);

} // namespace voxtrel::settings
