#include "platform/selection_ports.h"

#include "platform/windows/windows_clipboard.h"
#include "platform/windows/windows_keys.h"
#include "platform/windows/windows_target_windows.h"

namespace voxtrel::platform {

SelectionPorts MakeSelectionPorts()
{
    SelectionPorts ports;
    ports.clipboard = std::make_unique<WindowsClipboard>();
    ports.keyboard = std::make_unique<WindowsKeyboard>();
    ports.windows = std::make_unique<WindowsTargetWindows>();
    ports.keystrokes = std::make_unique<WindowsKeystrokes>();
    return ports;
}

} // namespace voxtrel::platform
