#pragma once

#include "platform/keyboard.h"
#include "platform/keystrokes.h"

#include <string_view>

namespace voxtrel::platform {

class WindowsKeyboard final : public Keyboard {
public:
    short GetAsyncKeyState(int virtualKey) override;
};

class WindowsKeystrokes final : public Keystrokes {
public:
    bool SendKeys(std::wstring_view keys, NativeWindow window) override;
};

} // namespace voxtrel::platform
