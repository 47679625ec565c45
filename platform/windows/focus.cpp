#include "platform/focus.h"

namespace voxtrel::platform {

// Frame and content are one window here.
void FocusContent(wxWindow&) {}

} // namespace voxtrel::platform
