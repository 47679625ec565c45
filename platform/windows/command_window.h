#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace voxtrel::platform {

// The running program's own way of being handed a command: a message to a window that nobody sees. A DDE
// client asks every window of the desktop for a conversation and waits for the slowest of them; this asks no
// other program.
class CommandWindow {
public:
    virtual ~CommandWindow() = default;
};

// handle runs on the user-interface thread once the sender has its answer. Null when the system refuses the
// window.
std::unique_ptr<CommandWindow> MakeCommandWindow(std::function<void(std::wstring)> handle);

// False when there is no such window within a few seconds, or its program does not answer.
bool SendToCommandWindow(std::wstring_view command);

} // namespace voxtrel::platform
