#pragma once

#include "platform/linux/x11_clipboard.h"
#include "platform/linux/x11_connection.h"
#include "platform/target_windows.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace voxtrel::platform {

// Windows as the window manager tells of them; without one, by the keyboard focus.
class X11TargetWindows final : public TargetWindows {
public:
    // The clipboard outlives this.
    explicit X11TargetWindows(X11Clipboard& clipboard);

    bool IsOpen() const { return connection_.IsOpen(); }

    NativeWindow GetForegroundWindow() override;
    // A process stands for its thread here; 0 for a window that does not tell its process.
    std::uint32_t GetWindowThreadProcessId(NativeWindow window) override;
    std::uint32_t OwnThread() override;
    std::wstring GetWindowTitle(NativeWindow window) override;
    void SetForegroundWindow(NativeWindow window) override;
    void AwaitOwnWindow() override;
    // Programs that do not answer such questions at all count as well.
    bool IsHungAppWindow(NativeWindow window) override;
    // There is no such message here. Its counterpart is the text that the program has selected: it goes to
    // the clipboard.
    void SendCopyMessage(NativeWindow window) override;

    // Whether keys that are typed now reach the window or a part of it.
    bool HasFocus(NativeWindow window);
    // Waits until the program has handled everything up to now. False when it has not within the time.
    bool AwaitAnswer(NativeWindow window, std::chrono::milliseconds time);
    // Terminals: every keystroke is input for the program that runs there, Ctrl+C ends it.
    bool TakesKeysAsInput(NativeWindow window);

private:
    void HandleEvents();
    bool Handle(const xcb_generic_event_t& event); // true for the awaited answer
    bool Answers(xcb_window_t window);
    xcb_window_t ActiveWindow();
    xcb_window_t FocusedTopWindow();
    xcb_window_t InputFocus();
    xcb_window_t Parent(xcb_window_t window);
    bool Exists(xcb_window_t window);
    void Tell(xcb_window_t window, xcb_window_t destination, std::uint32_t eventMask, xcb_atom_t message,
              const std::uint32_t (&data)[5]);

    X11Connection connection_;
    X11Clipboard& clipboard_;
    bool activeKnown_ = false; // active_ is what the window manager says at this moment
    bool managed_ = false;     // a window manager tells the active window
    xcb_window_t active_ = 0;
    xcb_window_t asked_ = 0; // whose answer is awaited
    std::uint32_t question_ = 0;
};

} // namespace voxtrel::platform
