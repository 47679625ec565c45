#pragma once

#include <string_view>

class wxCheckListBox;

namespace voxtrel::platform {

// What a screen reader calls the list, and that it knows which entries are ticked where the toolkit does not
// tell.
void SetAccessibleNameAndTicks(wxCheckListBox& list, std::wstring_view name);

} // namespace voxtrel::platform
