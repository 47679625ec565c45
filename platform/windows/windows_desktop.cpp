#include "platform/desktop.h"

#include "platform/windows/windows_headers.h"

namespace voxtrel::platform {
namespace {

HWND Handle(NativeWindow window) { return reinterpret_cast<HWND>(window); }

class WindowsDesktop final : public Desktop {
public:
    void ShowWindow(NativeWindow window, int command) override { ::ShowWindow(Handle(window), command); }

    void SetWindowPos(NativeWindow window, NativeWindow insertAfter, int x, int y, int width, int height,
                      unsigned flags) override
    {
        ::SetWindowPos(Handle(window), Handle(insertAfter), x, y, width, height, flags);
    }

    int ScreenWidth() const override { return GetSystemMetrics(SM_XVIRTUALSCREEN) + GetSystemMetrics(SM_CXVIRTUALSCREEN); }
    int ScreenHeight() const override { return GetSystemMetrics(SM_YVIRTUALSCREEN) + GetSystemMetrics(SM_CYVIRTUALSCREEN); }
};

} // namespace

std::unique_ptr<Desktop> MakeDesktop() { return std::make_unique<WindowsDesktop>(); }

} // namespace voxtrel::platform
