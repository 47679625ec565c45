#pragma once

#include "settings/form_model.h"

#include <string>
#include <string_view>
#include <vector>

class wxTopLevelWindow;
class wxWindow;

namespace voxtrel::settings {

// A toolbar built of any windows, as localisation sees it: one kind of control, whatever it is made of.
class ToolbarTexts {
public:
    virtual ~ToolbarTexts() = default;

    virtual std::vector<ButtonModel> Buttons() const = 0;
    virtual void SetButtons(const std::vector<ButtonModel>& buttons) = 0;
};

// Marks a window or control with the number of its text.
void SetTag(wxWindow& window, std::wstring_view tag);

// The window and its controls as a model, in the order in which they were made, groups and pages included; and back.
// ApplyForm expects the window to have the controls that ReadForm saw.
FormModel ReadForm(wxTopLevelWindow& form);
void ApplyForm(wxTopLevelWindow& form, const FormModel& model);

// Puts the texts of the table in place on a real window.
void LocaliseForm(wxTopLevelWindow& form, const StringTable& table);

} // namespace voxtrel::settings
