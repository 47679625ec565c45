#pragma once

#include "platform/accessible_source.h"
#include "platform/linux/atspi_accessible.h"

namespace voxtrel::platform {

// What the objects at a point say, from the deepest one outwards: the first that has a name is described.
AccessibleObject Describe(const AtspiAccessible& deepest, ScreenPoint point);

} // namespace voxtrel::platform
