#pragma once

#include "platform/desktop.h"

class wxWindow;

namespace voxtrel::platform {

// The number by which other programs and the desktop know a top window; 0 when it has none yet.
NativeWindow WindowHandle(const wxWindow& window);

} // namespace voxtrel::platform
