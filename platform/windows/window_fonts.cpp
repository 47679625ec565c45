#include "platform/window_fonts.h"

namespace voxtrel::platform {

// A font is in effect as soon as it is set here.
void SettleFonts(wxWindow&) {}

} // namespace voxtrel::platform
