#pragma once

#include "hotkeys/hot_key_poll.h"
#include "hotkeys/user_clipboard.h"
#include "platform/clipboard.h"
#include "platform/keystrokes.h"
#include "platform/target_windows.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace voxtrel::hotkeys {

// What the selection requests work with. The ports outlive them; no function may be empty.
struct SelectionServices {
    platform::TargetWindows& windows;
    platform::Clipboard& clipboard;
    platform::Keystrokes& keystrokes;

    std::function<void()> DoEvents;                     // handles what is waiting in the event queue, once
    std::function<void(std::wstring)> Speak;            // BuildSpeechText
    std::function<void(std::wstring)> ReadInTextReader; // shows the window, sets its text and reads it
    std::function<void()> StopAll;                      // of the character
    // For the trace: the window that requests will now be made to, with its title.
    std::function<void(platform::NativeWindow, std::wstring_view)> TargetChanged;
};

// Speaks and reads what is selected in other programs, and the clipboard. One for the whole run, on the
// user-interface thread.
class Selection final : public HotKeyActions {
public:
    explicit Selection(SelectionServices services);

    void UpdateTargetWindow() override;
    void RunHotKey(int row) override;
    bool SelectionRequestInProgress() const override { return requestInProgress_; }

    // Brings TargetWindow to the front and yields.
    void FocusTarget();

    // The toolbar's requests. They do nothing while another selection request is in progress.
    void SpeakSelected();
    void ReadSelected();

    // The last window in front that is not the program's own; 0 until one was seen.
    platform::NativeWindow TargetWindow() const { return targetWindow_; }

private:
    enum class AfterFront { GoOn, Yield };

    void SpeakSelection();
    void ReadSelection();
    void SpeakClipboard();
    void ReadClipboard();

    void Request(AfterFront afterFront, const std::function<void(std::wstring)>& use);
    void ReturnFocus();

    std::wstring CopySelection(AfterFront afterFront);
    std::wstring CopyByKeys(std::wstring_view keys, platform::NativeWindow target, AfterFront afterFront);
    std::wstring CopyByMessage(platform::NativeWindow target);
    std::wstring AwaitText(std::uint32_t since);
    bool BringToFront(platform::NativeWindow target, AfterFront afterFront);

    SelectionServices services_;
    UserClipboard userClipboard_;
    platform::NativeWindow targetWindow_ = 0;
    bool requestInProgress_ = false;
};

} // namespace voxtrel::hotkeys
