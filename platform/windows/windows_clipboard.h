#pragma once

#include "platform/clipboard.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct HWND__;

namespace voxtrel::platform {

// To be used on the thread that made it.
class WindowsClipboard final : public Clipboard {
public:
    WindowsClipboard();
    ~WindowsClipboard() override;
    WindowsClipboard(const WindowsClipboard&) = delete;
    WindowsClipboard& operator=(const WindowsClipboard&) = delete;

    std::optional<std::wstring> GetText(std::chrono::milliseconds patience) override;
    bool SetText(std::wstring_view text, std::chrono::milliseconds patience) override;
    std::uint32_t GetClipboardSequenceNumber() override;
    bool AwaitChange(std::uint32_t since, std::chrono::steady_clock::time_point deadline) override;

private:
    using Deadline = std::chrono::steady_clock::time_point;

    // Waits at most a moment, and lets other programs' messages to this thread through: whoever empties the
    // clipboard tells its owner and waits for that.
    void WaitForNews(Deadline deadline);
    bool Open(Deadline deadline);

    HWND__* window_; // never shown; owns what is set here and hears of changes
    std::array<unsigned, 3> keepOutFormats_{};
};

} // namespace voxtrel::platform
