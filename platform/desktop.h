#pragma once

#include <cstdint>
#include <memory>

namespace voxtrel::platform {

// A window of any program, as a number the platform understands; 0 for none.
using NativeWindow = std::uintptr_t;

inline constexpr int kShowRestore = 9;            // ShowWindow: activate and restore
inline constexpr NativeWindow kTopmost = ~NativeWindow{0}; // SetWindowPos: insert after -1
inline constexpr unsigned kNoSizeNoMoveNoActivateShow = 0x53;

// The windows of the desktop and their order.
class Desktop {
public:
    virtual ~Desktop() = default;

    virtual void ShowWindow(NativeWindow window, int command) = 0;
    virtual void SetWindowPos(NativeWindow window, NativeWindow insertAfter, int x, int y, int width, int height,
                              unsigned flags) = 0;

    // Of everything the monitors show together, pixels: what lies beyond is seen nowhere.
    virtual int ScreenWidth() const = 0;
    virtual int ScreenHeight() const = 0;
};

std::unique_ptr<Desktop> MakeDesktop();

} // namespace voxtrel::platform
