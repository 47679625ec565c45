#pragma once

#include "platform/keystrokes.h"
#include "platform/linux/x11_keys.h"
#include "platform/linux/x11_target_windows.h"

#include <string_view>

namespace voxtrel::platform {

// Types into the window in front, once it is sure that the keys arrive there.
class X11Keystrokes final : public Keystrokes {
public:
    // Both outlive this.
    X11Keystrokes(X11Keys& keys, X11TargetWindows& windows) : keys_(keys), windows_(windows) {}

    bool SendKeys(std::wstring_view keys, NativeWindow window) override;

private:
    X11Keys& keys_;
    X11TargetWindows& windows_;
};

} // namespace voxtrel::platform
