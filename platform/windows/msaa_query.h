#pragma once

#include "platform/accessible_source.h"

namespace voxtrel::platform {

// Asks Microsoft Active Accessibility, which is older than UI Automation and what some programs still speak.
// The thread has COM.
AccessibleObject MsaaObjectAt(ScreenPoint point);

} // namespace voxtrel::platform
