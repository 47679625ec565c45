#pragma once

#include "platform/clipboard.h"

#include <functional>
#include <string>
#include <vector>

namespace voxtrel::tests {

// Calls what a test has hung in, which may take itself away meanwhile.
inline void RunHook(std::function<void()> hook)
{
    if (hook)
        hook();
}

// A clipboard that other programs can change (Copy), hold open (heldFor) or refuse to hand out (ownerHangs).
// Time does not pass by itself: waiting costs nothing and shows only in what was asked.
class FakeClipboard final : public platform::Clipboard {
public:
    // What a user or another program puts there.
    void Copy(std::wstring_view newText)
    {
        text = newText;
        ours = false;
        ++sequence;
    }

    // Something that is no text, a picture for one.
    void CopyOther()
    {
        text.clear();
        ours = false;
        ++sequence;
    }

    std::optional<std::wstring> GetText(std::chrono::milliseconds patience) override
    {
        ++reads;
        if (IsHeld(patience) || (ownerHangs && !ours))
            return std::nullopt;
        const std::wstring read = text;
        RunHook(onRead);
        return read;
    }

    bool SetText(std::wstring_view newText, std::chrono::milliseconds patience) override
    {
        if (IsHeld(patience))
            return false;
        text = newText;
        ours = true;
        ++sequence;
        written.emplace_back(newText);
        RunHook(onWritten);
        return true;
    }

    std::uint32_t GetClipboardSequenceNumber() override { return sequence; }

    bool AwaitChange(std::uint32_t since, std::chrono::steady_clock::time_point) override
    {
        if (sequence == since)
            RunHook(onAwait);
        return sequence != since;
    }

    std::wstring text;
    bool ours = false;
    bool ownerHangs = false;
    std::chrono::milliseconds heldFor{0}; // how long another program still holds it; waiting uses it up
    std::uint32_t sequence = 7;
    int reads = 0;
    std::vector<std::wstring> written; // by the program
    std::function<void()> onRead;      // after the program read
    std::function<void()> onWritten;   // after the program wrote
    std::function<void()> onAwait;     // when the program waits in vain

private:
    bool IsHeld(std::chrono::milliseconds patience)
    {
        if (heldFor > patience) {
            heldFor -= patience;
            return true;
        }
        heldFor = {};
        return false;
    }
};

} // namespace voxtrel::tests
