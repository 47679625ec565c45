#pragma once

#include "platform/desktop.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace voxtrel::platform {

// A window to copy from, on a thread of its own like another program's, as odd as it is asked to be. Its
// thread ends with the object.
class TargetWindow {
public:
    struct Habits {
        std::wstring text = L"Hello.";
        bool copiesOnInsert = true;
        bool copiesOnC = true;
        bool copiesOnMessage = false;
        bool hangsOnKey = false; // until Wake
        bool closesOnKey = false;
    };

    explicit TargetWindow(Habits habits);
    ~TargetWindow();
    TargetWindow(const TargetWindow&) = delete;
    TargetWindow& operator=(const TargetWindow&) = delete;

    NativeWindow Handle() const;

    // Runs on the window's thread: the window takes no messages meanwhile, until Wake.
    void Hang();
    void Wake();

    // The keystrokes with their modifiers, "Ctrl+Insert" for one.
    std::vector<std::string> Keys() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace voxtrel::platform
