#pragma once

#include "platform/accessible_source.h"
#include "platform/linux/atspi_accessible.h"
#include "platform/linux/atspi_bus.h"
#include "platform/linux/x11_pointer.h"

#include <optional>
#include <vector>

namespace voxtrel::platform {

// Finds the object under the pointer: the X server tells which window is on top there, AT-SPI what lies in
// it.
class AtspiSource final : public AccessibleSource {
public:
    std::optional<AccessibleObject> ObjectAt(ScreenPoint point, std::chrono::milliseconds deadline) override;

private:
    AccessibleObject Look(ScreenPoint point);
    std::optional<AtspiAccessible> ProgramOf(const WindowUnderPoint& window);

    AtspiBus bus_;
    X11Pointer pointer_;
};

} // namespace voxtrel::platform
