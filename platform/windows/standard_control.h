#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/control_questions.h"

#include <optional>

namespace voxtrel::platform {

struct StandardControl {
    AccessibleObject object; // without a name when it has no caption
    bool isItem = false;     // of a list, a tab, a line of a text: not the control itself
};

// Group boxes lie before what they frame, and the system's search for the window at a point ends at them. The
// window that the group box frames there; null when there is none, or the window is no group box.
HWND WindowFramedBy(HWND window, ScreenPoint point);

// What one of the system's own controls (a button, a box, an item of a list) is, asked of its window. For
// systems whose accessibility tells the name of such a control and nothing else. Nothing for any other
// window.
std::optional<StandardControl> StandardControlAt(ControlQuestions& questions, HWND window, ScreenPoint point);

} // namespace voxtrel::platform
