#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/windows_headers.h"

#include <functional>
#include <memory>

namespace voxtrel::tests {

// A window with the system's own controls, on a thread of its own like another program's.
class ControlsWindow {
public:
    ControlsWindow();
    ~ControlsWindow();
    ControlsWindow(const ControlsWindow&) = delete;
    ControlsWindow& operator=(const ControlsWindow&) = delete;

    // Made on the window's thread, at this place in the window.
    HWND Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, RECT place);

    // Runs on the window's thread, to its end.
    void Do(const std::function<void()>& work);

    // The window answers no message until Wake.
    void Freeze();
    void Wake();

    // On the screen; x and y count from the upper left of the control.
    static platform::ScreenPoint On(HWND control, int x, int y);
    static platform::ScreenPoint MiddleOf(HWND control);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace voxtrel::tests
