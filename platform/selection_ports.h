#pragma once

#include "platform/clipboard.h"
#include "platform/desktop_reach.h"
#include "platform/keyboard.h"
#include "platform/keystrokes.h"
#include "platform/target_windows.h"

#include <memory>

namespace voxtrel::platform {

// What selection requests and hot keys are made with. The parts know each other and stay together; each
// works, as if nothing were there, also where the desktop cannot be reached.
struct SelectionPorts {
    DesktopReach reach = DesktopReach::Everything;
    std::unique_ptr<Clipboard> clipboard;
    std::unique_ptr<Keyboard> keyboard;
    std::unique_ptr<TargetWindows> windows;
    std::unique_ptr<Keystrokes> keystrokes;
};

// To be called on the user-interface thread, once its toolkit is there; what is on the clipboard is handed to
// other programs from that thread's event loop.
SelectionPorts MakeSelectionPorts();

} // namespace voxtrel::platform
