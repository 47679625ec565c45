#pragma once

#include <xcb/xcb.h>

#include <optional>
#include <string>

namespace voxtrel::platform {

// The text on the clipboard when it was copied in one of the program's own windows, owner being that window;
// nothing when the owner is not one of them.
std::optional<std::wstring> ToolkitClipboardText(xcb_window_t owner);

// Sends what the program's windows have asked of the display and is still waiting to go.
void FlushToolkit();

} // namespace voxtrel::platform
