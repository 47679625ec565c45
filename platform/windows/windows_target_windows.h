#pragma once

#include "platform/target_windows.h"

#include <cstdint>
#include <string>

namespace voxtrel::platform {

class WindowsTargetWindows final : public TargetWindows {
public:
    NativeWindow GetForegroundWindow() override;
    std::uint32_t GetWindowThreadProcessId(NativeWindow window) override;
    std::uint32_t OwnThread() override;
    std::wstring GetWindowTitle(NativeWindow window) override;
    void SetForegroundWindow(NativeWindow window) override;
    void AwaitOwnWindow() override {} // it is there at once
    bool IsHungAppWindow(NativeWindow window) override;
    void SendCopyMessage(NativeWindow window) override;
};

} // namespace voxtrel::platform
