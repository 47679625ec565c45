#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace voxtrel::platform {

// A program of our own that runs beside this one and talks through its standard input and output. At its end,
// or at ours, the other side reads the end of its input. No call waits.
class ServerProcess {
public:
    virtual ~ServerProcess() = default;

    // Whether the program at this path could be started. One that runs already is killed first.
    virtual bool Start(const std::wstring& path) = 0;
    virtual bool Running() = 0;
    // What it has written since the last call, empty for nothing.
    virtual std::string Read() = 0;
    virtual void Write(std::string_view bytes) = 0;
    // Ends its input, so that it ends by itself.
    virtual void Close() = 0;
    virtual void Kill() = 0;
};

std::unique_ptr<ServerProcess> MakeServerProcess();

} // namespace voxtrel::platform
