#include "platform/focus.h"

#include <wx/window.h>

namespace voxtrel::platform {

// Frame and content are one window here.
void FocusContent(wxWindow&) {}

// Lists choose an entry only by a key or the mouse here.
void FocusWithoutChoice(wxListBox&) {}

void EnableInTabOrder(wxWindow& control, bool enabled) { control.Enable(enabled); }

} // namespace voxtrel::platform
