#pragma once

#include "platform/accessible_object.h"

#include <chrono>
#include <memory>
#include <optional>

// What the accessibility server asks of the desktop.
namespace voxtrel::platform {

// On the whole desktop, in the pixels of the screen whatever the scale; negative left of and above the main
// screen.
struct ScreenPoint {
    int x = 0;
    int y = 0;

    bool operator==(const ScreenPoint&) const = default;
};

struct PointerState {
    ScreenPoint point;
    bool pressed = false; // a button is held down
};

class MousePointer {
public:
    virtual ~MousePointer() = default;

    // Nothing while the desktop does not tell, for instance when the screen is locked.
    virtual std::optional<PointerState> State() = 0;
};

class AccessibleSource {
public:
    virtual ~AccessibleSource() = default;

    // The deepest object at this place that has something to say; an empty one when there is none. Nothing
    // when the program there did not answer in time: the call then took about as long as the deadline, or
    // longer where the platform has no means to give up.
    virtual std::optional<AccessibleObject> ObjectAt(ScreenPoint point,
                                                     std::chrono::milliseconds deadline) = 0;
};

// Called once, at the start of the server, before anything else here.
void PrepareAccessibilityServer();

// Called once at its end: gives back what was taken of the desktop.
void EndAccessibilityServer();

std::unique_ptr<MousePointer> MakeMousePointer();

// Made and used by one thread.
std::unique_ptr<AccessibleSource> MakeAccessibleSource();

} // namespace voxtrel::platform
