#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace voxtrel::platform {

// Receives command strings from other programs while it lives; handle runs on the user-interface thread, once for
// each string, after the sender was told that it was accepted.
class CommandServer {
public:
    virtual ~CommandServer() = default;
};

// Null when the channel cannot be opened; the program then runs without commands.
std::unique_ptr<CommandServer> MakeCommandServer(std::function<void(std::wstring)> handle);

// Hands a command string to the running program. False when none took it within a few seconds.
bool SendCommand(std::wstring_view command);

} // namespace voxtrel::platform
