#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/windows_headers.h"

namespace voxtrel::platform {

struct MsaaAnswer {
    AccessibleObject object;
    // Whether the object is the deepest one itself, not one around it that had to speak for it.
    bool deepest = false;
    // Whether it told what kind of control it is, not just that it is some window.
    bool kindKnown = false;
};

// Asks Microsoft Active Accessibility, which is older than UI Automation and what some programs still speak.
// The thread has COM. A window that is not null is asked instead of the one that the system finds at the
// point.
MsaaAnswer MsaaObjectAt(ScreenPoint point, HWND window);

} // namespace voxtrel::platform
