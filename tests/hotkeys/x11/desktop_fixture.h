#pragma once

#include "platform/linux/x11_clipboard.h"
#include "platform/linux/x11_keys.h"
#include "platform/linux/x11_keystrokes.h"
#include "platform/linux/x11_target_windows.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace voxtrel::platform {

// A process that a test started, with what it has printed so far. Ended with the object.
class Child {
public:
    explicit Child(const std::vector<std::string>& command);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // Everything printed until now.
    const std::string& Output();
    bool HasEnded();
    void Signal(int number) const;

private:
    pid_t process_ = -1;
    int output_ = -1;
    bool ended_ = false;
    std::string text_;
};

// The adapters, on a desktop with target programs.
class X11Test : public ::testing::Test {
protected:
    static constexpr std::chrono::seconds kPatience{20};

    // Asks again and again, serving the clipboard meanwhile. False when it never came true.
    bool Until(const std::function<bool()>& condition, std::chrono::milliseconds patience = kPatience);

    // Starts target_program and waits until its window is in front.
    std::unique_ptr<Child> StartTarget(std::vector<std::string> options, NativeWindow& window);

    // Lets the user's fingers act: xdotool. What they did has arrived on this display when it returns.
    void Fingers(std::vector<std::string> arguments);

    // The output of another program; the clipboard is served while it runs.
    std::string Ask(const std::vector<std::string>& command);

    bool IsDown(int virtualKey);

    X11Clipboard clipboard;
    X11TargetWindows windows{clipboard};
    X11Keys keys;
    X11Keystrokes keystrokes{keys, windows};

private:
    // Where the pointer is, counted from the left.
    int PointerX();

    X11Connection connection_;
};

} // namespace voxtrel::platform
