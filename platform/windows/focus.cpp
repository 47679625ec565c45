#include "platform/focus.h"

#include <wx/window.h>

namespace voxtrel::platform {

// Frame and content are one window here.
void FocusContent(wxWindow&) {}

void EnableInTabOrder(wxWindow& control, bool enabled) { control.Enable(enabled); }

} // namespace voxtrel::platform
