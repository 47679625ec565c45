#pragma once

#include "platform/desktop.h"

#include <cstdint>
#include <string>

namespace voxtrel::platform {

// The windows of other programs, as far as text is copied from them. No call waits longer than a second for a
// window that does not answer, and a window that is gone is no error.
class TargetWindows {
public:
    virtual ~TargetWindows() = default;

    // The window that the user works in; 0 when there is none at this moment.
    virtual NativeWindow GetForegroundWindow() = 0;

    // The thread that owns the window, to be compared with OwnThread; 0 when it is not known.
    virtual std::uint32_t GetWindowThreadProcessId(NativeWindow window) = 0;
    virtual std::uint32_t OwnThread() = 0;

    virtual std::wstring GetWindowTitle(NativeWindow window) = 0;

    // Returns once the window is in front, or when it does not get there within a moment.
    virtual void SetForegroundWindow(NativeWindow window) = 0;

    // A window that the program has just shown takes the front a little later. Returns once one is there, or when none
    // gets there within a moment.
    virtual void AwaitOwnWindow() = 0;

    // Asks the window whether it still takes its messages. True also for a window that is gone.
    virtual bool IsHungAppWindow(NativeWindow window) = 0;

    // Sends the copy message (0x0301, both parameters 0) and waits until the window has acted on it: what it
    // has selected is on the clipboard then, if it knows the message.
    virtual void SendCopyMessage(NativeWindow window) = 0;
};

} // namespace voxtrel::platform
