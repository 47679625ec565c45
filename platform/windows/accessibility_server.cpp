#include "platform/accessible_source.h"

#include "platform/windows/windows_accessible_source.h"
#include "platform/windows/windows_headers.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

namespace voxtrel::platform {
namespace {

class WindowsPointer final : public MousePointer {
public:
    std::optional<PointerState> State() override
    {
        POINT point;
        if (!GetCursorPos(&point))
            return std::nullopt;
        const bool pressed = (GetAsyncKeyState(VK_LBUTTON) | GetAsyncKeyState(VK_RBUTTON)) != 0;
        return PointerState{{point.x, point.y}, pressed};
    }
};

// Pixels of the screen, whatever the scale of the monitor that a window is on. Windows of before 2017 lacks
// this.
void CountInPixels()
{
    using SetContext = BOOL(WINAPI*)(HANDLE);
    const HMODULE user = GetModuleHandleW(L"user32.dll");
    const auto address = user ? GetProcAddress(user, "SetProcessDpiAwarenessContext") : nullptr;
    const auto setContext = reinterpret_cast<SetContext>(reinterpret_cast<void*>(address));
    const auto perMonitor = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-4));
    if (!setContext || !setContext(perMonitor))
        SetProcessDPIAware();
}

} // namespace

void PrepareAccessibilityServer()
{
    CountInPixels();
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

void EndAccessibilityServer() {}

std::unique_ptr<MousePointer> MakeMousePointer() { return std::make_unique<WindowsPointer>(); }

std::unique_ptr<AccessibleSource> MakeAccessibleSource()
{
    return std::make_unique<WindowsAccessibleSource>(SystemUiaClient);
}

} // namespace voxtrel::platform
