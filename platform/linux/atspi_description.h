#pragma once

#include "platform/accessible_object.h"
#include "platform/linux/atspi_accessible.h"

#include <vector>

namespace voxtrel::platform {

// What the objects under a point say: the deepest one that has a name is described. chain leads from the
// window to the deepest object and is not empty.
AccessibleObject Describe(const std::vector<AtspiAccessible>& chain, ScreenPoint point);

} // namespace voxtrel::platform
