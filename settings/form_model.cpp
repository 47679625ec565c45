#include "settings/form_model.h"

#include "settings/number_conversions.h"
#include "settings/string_numbers.h"

#include <cmath>
#include <limits>
#include <string_view>

namespace voxtrel::settings {

namespace {

// Nothing when the source has no whole number above 0 at its head, or the number has no text.
std::optional<std::wstring> TextFor(const StringTable& table, std::wstring_view source)
{
    const double number = Val(source);
    if (number <= 0 || number > std::numeric_limits<int>::max() || number != std::floor(number))
        return std::nullopt;
    return table.Find(static_cast<int>(number));
}

void Localise(std::wstring& property, const StringTable& table, std::wstring_view source)
{
    if (auto text = TextFor(table, source))
        property = std::move(*text);
}

void LocaliseToolbar(ControlModel& toolbar, const StringTable& table)
{
    for (ButtonModel& button : toolbar.buttons) {
        Localise(button.toolTipText, table, button.toolTipText);
        for (std::wstring& entry : button.buttonMenus)
            Localise(entry, table, entry);
    }
}

void LocaliseControl(ControlModel& control, const StringTable& table)
{
    if (control.typeName == L"Label") {
        Localise(control.caption, table, control.tag);
    } else if (control.typeName == L"Menu") {
        Localise(control.caption, table, control.caption);
    } else if (control.typeName == L"Toolbar") {
        LocaliseToolbar(control, table);
    } else if (control.typeName == L"ListView") {
        for (ColumnHeaderModel& header : control.columnHeaders)
            Localise(header.text, table, header.tag);
        Localise(control.toolTipText, table, control.toolTipText);
    } else {
        Localise(control.typeName == L"TextBox" ? control.text : control.caption, table, control.tag);
        Localise(control.toolTipText, table, control.toolTipText);
    }
}

void LocaliseFont(FontModel& font, const StringTable& table)
{
    font.name = table.Text(strings::kWindowFontName);
    const double size = Val(table.Text(strings::kWindowFontSize));
    if (size > 0)
        font.size = size;
}

} // namespace

void LocaliseForm(FormModel& form, const StringTable& table)
{
    const bool ownFont = table.Find(strings::kWindowFontName).has_value();
    Localise(form.caption, table, form.tag);
    if (ownFont)
        LocaliseFont(form.font, table);
    for (ControlModel& control : form.controls) {
        if (ownFont && control.font)
            control.font = form.font;
        LocaliseControl(control, table);
    }
}

} // namespace voxtrel::settings
