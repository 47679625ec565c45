#pragma once

#include <string_view>

class wxNotebook;
class wxWindow;

namespace voxtrel::platform {

// What a screen reader calls a control that shows no text of its own.
void SetAccessibleName(wxWindow& control, std::wstring_view name);

// To be called when a notebook has been hidden and is about to be destroyed: screen readers are no longer
// told of its tabs.
void ForgetTabs(wxNotebook& notebook);

} // namespace voxtrel::platform
