// Copying the selection of another program.
//
// The other program's text cannot be read, so the clipboard is borrowed: the user's text is kept, the
// clipboard is emptied, the target is brought to the front and asked three times to copy, by Ctrl+Insert, by
// Ctrl+C and by the copy message, until there is text. Each time the clipboard's change is awaited with a
// deadline. The user's text is put back on every way out.
//
// No key is typed unless the target is in front and takes its messages at that moment: a key that lands in
// another window does harm, and a hung target would copy when it wakes, over what the user has put on the
// clipboard since.

#include "hotkeys/selection.h"

#include <chrono>
#include <utility>

namespace voxtrel::hotkeys {
namespace {

using namespace std::chrono_literals;

constexpr auto kCopyDeadline = 400ms; // from the keystroke having been taken to the clipboard's change
constexpr auto kClipboardPatience = 1000ms;

class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag) : flag_(flag) { flag_ = true; }
    ~ScopedFlag() { flag_ = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& flag_;
};

class PutBackAtEnd {
public:
    explicit PutBackAtEnd(UserClipboard& clipboard) : clipboard_(clipboard) {}
    ~PutBackAtEnd() { clipboard_.PutBack(); }
    PutBackAtEnd(const PutBackAtEnd&) = delete;
    PutBackAtEnd& operator=(const PutBackAtEnd&) = delete;

private:
    UserClipboard& clipboard_;
};

// Only spaces go: a line break or a tab is text.
std::wstring Trim(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos)
        return {};
    return std::wstring(text.substr(first, text.find_last_not_of(L' ') - first + 1));
}

} // namespace

Selection::Selection(SelectionServices services)
    : services_(std::move(services)), userClipboard_(services_.clipboard)
{
}

void Selection::UpdateTargetWindow()
{
    userClipboard_.Retry();
    const platform::NativeWindow foreground = services_.windows.GetForegroundWindow();
    if (foreground == 0 || foreground == targetWindow_)
        return;
    // The thread is compared, not the process.
    if (services_.windows.GetWindowThreadProcessId(foreground) == services_.windows.OwnThread())
        return;
    targetWindow_ = foreground;
    services_.TargetChanged(foreground, services_.windows.GetWindowTitle(foreground));
}

void Selection::RunHotKey(int row)
{
    switch (row) {
    case 1:
        return SpeakSelection();
    case 2:
        return ReadSelection();
    case 3:
        return SpeakClipboard();
    case 4:
        return ReadClipboard();
    case 5:
        return services_.StopAll();
    default:
        return;
    }
}

void Selection::FocusTarget()
{
    services_.windows.SetForegroundWindow(targetWindow_);
    services_.DoEvents();
}

void Selection::SpeakSelection()
{
    Request(AfterFront::Yield, [this](std::wstring text) {
        if (text.empty())
            return;
        services_.Speak(std::move(text));
        ReturnFocus();
    });
}

void Selection::ReadSelection()
{
    Request(AfterFront::Yield, [this](std::wstring text) {
        if (text.empty())
            return;
        services_.ReadInTextReader(std::move(text));
        // Returned too early, the focus would go to the Text Reader after all.
        services_.windows.AwaitOwnWindow();
        ReturnFocus();
    });
}

void Selection::SpeakSelected()
{
    Request(AfterFront::GoOn, [this](std::wstring text) {
        userClipboard_.PutBack();
        services_.Speak(std::move(text)); // also an empty one
    });
}

void Selection::ReadSelected()
{
    Request(AfterFront::Yield, [this](std::wstring text) {
        userClipboard_.PutBack();
        if (!text.empty())
            services_.ReadInTextReader(std::move(text));
    });
}

// The user's text is put back on every way out; a request that wants it back earlier does so itself.
void Selection::Request(AfterFront afterFront, const std::function<void(std::wstring)>& use)
{
    if (requestInProgress_)
        return;
    const ScopedFlag inProgress(requestInProgress_);
    const PutBackAtEnd putBack(userClipboard_);
    use(CopySelection(afterFront));
}

void Selection::ReturnFocus()
{
    FocusTarget();
    services_.DoEvents();
}

void Selection::SpeakClipboard() { services_.Speak(userClipboard_.Text()); }

void Selection::ReadClipboard()
{
    std::wstring text = userClipboard_.Text();
    if (!text.empty())
        services_.ReadInTextReader(std::move(text));
}

std::wstring Selection::CopySelection(AfterFront afterFront)
{
    const platform::NativeWindow target = targetWindow_;
    if (!userClipboard_.Borrow() || target == 0)
        return {};
    for (const std::wstring_view keys : {platform::kCtrlInsert, platform::kCtrlC}) {
        std::wstring text = CopyByKeys(keys, target, afterFront);
        if (!text.empty())
            return text;
        // The user has gone to another window during a yield and is not to be torn back from there.
        if (targetWindow_ != target)
            return {};
    }
    return CopyByMessage(target);
}

std::wstring Selection::CopyByKeys(std::wstring_view keys, platform::NativeWindow target,
                                   AfterFront afterFront)
{
    if (!BringToFront(target, afterFront) || services_.windows.IsHungAppWindow(target))
        return {};
    const std::uint32_t before = services_.clipboard.GetClipboardSequenceNumber();
    if (!services_.keystrokes.SendKeys(keys, target))
        return {};
    return AwaitText(before);
}

std::wstring Selection::CopyByMessage(platform::NativeWindow target)
{
    if (services_.windows.IsHungAppWindow(target))
        return {};
    services_.windows.SendCopyMessage(target);
    return Trim(services_.clipboard.GetText(kClipboardPatience).value_or(std::wstring()));
}

// Some programs empty the clipboard in one step and fill it in the next: the first change need not be the
// text.
std::wstring Selection::AwaitText(std::uint32_t since)
{
    const auto deadline = std::chrono::steady_clock::now() + kCopyDeadline;
    for (;;) {
        const bool changed = services_.clipboard.AwaitChange(since, deadline);
        since = services_.clipboard.GetClipboardSequenceNumber();
        std::wstring text = Trim(services_.clipboard.GetText(kClipboardPatience).value_or(std::wstring()));
        if (!text.empty() || !changed)
            return text;
    }
}

bool Selection::BringToFront(platform::NativeWindow target, AfterFront afterFront)
{
    services_.windows.SetForegroundWindow(target);
    if (afterFront == AfterFront::Yield)
        services_.DoEvents();
    return services_.windows.GetForegroundWindow() == target;
}

} // namespace voxtrel::hotkeys
