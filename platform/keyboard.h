#pragma once

namespace voxtrel::platform {

// Virtual-key codes, the same on every platform.
inline constexpr int kVirtualKeyControl = 17;
inline constexpr int kVirtualKeyF1 = 112; // F2 and up follow

// The state of the keyboard, whichever window has it.
class Keyboard {
public:
    virtual ~Keyboard() = default;

    // Negative while the key is down at this moment; codes that name no key are never down.
    virtual short GetAsyncKeyState(int virtualKey) = 0;
};

} // namespace voxtrel::platform
