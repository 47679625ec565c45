#pragma once

#include "fakes/fake_clipboard.h"
#include "platform/keystrokes.h"
#include "platform/target_windows.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace voxtrel::tests {

// A window of another program and what it does when it is asked to copy.
struct FakeTarget {
    std::wstring selection;
    std::set<std::wstring> copiesOn; // keystrokes
    bool copiesOnMessage = false;
    bool hung = false;
    bool comesToFront = true;
    bool emptiesFirst = false; // empties the clipboard, and fills it when the program waits again
    std::uint32_t thread = 2;
    std::wstring title;
    std::function<void()> onKey; // before it acts on a keystroke
};

// The windows of a desktop, and a keyboard wire that ends in the window in front.
class FakeTargetWindows final : public platform::TargetWindows, public platform::Keystrokes {
public:
    static constexpr std::uint32_t kOwnThread = 1;
    static constexpr platform::NativeWindow kOwnWindow = 100;

    explicit FakeTargetWindows(FakeClipboard& clipboard) : clipboard_(clipboard)
    {
        targets[kOwnWindow].thread = kOwnThread;
    }

    platform::NativeWindow GetForegroundWindow() override { return foreground; }
    std::uint32_t GetWindowThreadProcessId(platform::NativeWindow window) override
    {
        return targets.contains(window) ? targets[window].thread : 0;
    }
    std::uint32_t OwnThread() override { return kOwnThread; }
    std::wstring GetWindowTitle(platform::NativeWindow window) override
    {
        return targets.contains(window) ? targets[window].title : std::wstring();
    }

    void SetForegroundWindow(platform::NativeWindow window) override
    {
        brought.push_back(window);
        if (targets.contains(window) && targets[window].comesToFront)
            foreground = window;
    }

    void AwaitOwnWindow() override
    {
        if (ownWindowIsComing)
            foreground = kOwnWindow;
        ownWindowIsComing = false;
    }

    bool IsHungAppWindow(platform::NativeWindow window) override
    {
        return targets.contains(window) && targets[window].hung;
    }

    void SendCopyMessage(platform::NativeWindow window) override
    {
        messages.push_back(window);
        if (targets.contains(window) && targets[window].copiesOnMessage)
            Copy(targets[window]);
    }

    bool SendKeys(std::wstring_view keys, platform::NativeWindow window) override
    {
        if (foreground != window)
            return false;
        typed.emplace_back(foreground, keys);
        const auto found = targets.find(foreground);
        if (found == targets.end())
            return true;
        if (const auto onKey = found->second.onKey)
            onKey();
        const auto still = targets.find(window);
        if (still != targets.end() && !still->second.hung &&
            still->second.copiesOn.contains(std::wstring(keys)))
            Copy(still->second);
        return true;
    }

    // The window is gone, as when its program ends.
    void Close(platform::NativeWindow window)
    {
        targets.erase(window);
        if (foreground == window)
            foreground = 0;
    }

    struct Typed {
        platform::NativeWindow window;
        std::wstring keys;
        Typed(platform::NativeWindow into, std::wstring_view what) : window(into), keys(what) {}
        bool operator==(const Typed&) const = default;
    };

    std::map<platform::NativeWindow, FakeTarget> targets;
    platform::NativeWindow foreground = 0;
    bool ownWindowIsComing = false; // takes the front when it is waited for
    std::vector<platform::NativeWindow> brought;
    std::vector<platform::NativeWindow> messages;
    std::vector<Typed> typed;

private:
    void Copy(const FakeTarget& target)
    {
        if (target.selection.empty() || clipboard_.heldFor.count() > 0)
            return;
        if (!target.emptiesFirst) {
            clipboard_.Copy(target.selection);
            return;
        }
        clipboard_.Copy(L"");
        clipboard_.onAwait = [this, selection = target.selection] {
            clipboard_.onAwait = nullptr;
            clipboard_.Copy(selection);
        };
    }

    FakeClipboard& clipboard_;
};

} // namespace voxtrel::tests
