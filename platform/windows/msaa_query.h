#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/accessible_answer.h"
#include "platform/windows/windows_headers.h"

namespace voxtrel::platform {

// Asks Microsoft Active Accessibility, which is older than UI Automation and what some programs still speak.
// The thread has COM. A window that is not null is asked instead of the one that the system finds at the
// point. What is not known by the deadline is left out.
AccessibleAnswer MsaaObjectAt(ScreenPoint point, HWND window, const Deadline& deadline);

} // namespace voxtrel::platform
