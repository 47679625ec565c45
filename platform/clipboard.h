#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace voxtrel::platform {

// The clipboard, as text. Other programs hold it open, own what is on it and may hang: every call has an end.
class Clipboard {
public:
    virtual ~Clipboard() = default;

    // The text, empty when there is none. Nothing when it could not be had within patience: another program
    // holds the clipboard all the time, or the owner of the text does not hand it out.
    virtual std::optional<std::wstring> GetText(std::chrono::milliseconds patience) = 0;

    // Replaces whatever is on the clipboard by the text, marked to stay out of clipboard histories and
    // clouds. False when another program holds the clipboard all the time: nothing has changed then.
    virtual bool SetText(std::wstring_view text, std::chrono::milliseconds patience) = 0;

    // Another number after each change of the clipboard by whatever program.
    virtual std::uint32_t GetClipboardSequenceNumber() = 0;

    // Waits for the sequence number to differ from since. False when it still is the same at the deadline.
    virtual bool AwaitChange(std::uint32_t since, std::chrono::steady_clock::time_point deadline) = 0;
};

} // namespace voxtrel::platform
