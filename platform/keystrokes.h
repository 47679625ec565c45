#pragma once

#include "platform/desktop.h"

#include <string_view>

namespace voxtrel::platform {

// The keystrokes that ask a program to copy, in the notation of SendKeys.
inline constexpr std::wstring_view kCtrlInsert = L"^{INSERT}";
inline constexpr std::wstring_view kCtrlC = L"^c";

class Keystrokes {
public:
    virtual ~Keystrokes() = default;

    // Types the keystroke into the window, which must be in front, and waits a bounded moment until the
    // window has taken it. Modifiers that the user holds down do not mix with it and are as the user holds
    // them afterwards. False when nothing was typed: the window is not in front, the notation is unknown, the
    // key does not exist, or the keystroke is known to mean something else than copying there.
    virtual bool SendKeys(std::wstring_view keys, NativeWindow window) = 0;
};

} // namespace voxtrel::platform
