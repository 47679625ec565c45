#pragma once

#include <string_view>

class wxWindow;

namespace voxtrel::platform {

// What a screen reader calls a control that shows no text of its own.
void SetAccessibleName(wxWindow& control, std::wstring_view name);

} // namespace voxtrel::platform
