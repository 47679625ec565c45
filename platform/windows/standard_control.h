#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/windows_headers.h"

#include <optional>

namespace voxtrel::platform {

struct StandardControl {
    AccessibleObject object; // without a name when it has no caption
    bool isItem = false;     // of a list, not the control itself
};

// What one of the system's own controls (a button, a box, a list) is, asked of its window. For systems whose
// accessibility tells the name of such a control and nothing else. Nothing for any other window.
std::optional<StandardControl> StandardControlAt(HWND window, ScreenPoint point);

} // namespace voxtrel::platform
