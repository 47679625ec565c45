#include "ovaccserver/server.h"
#include "platform/accessible_source.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

namespace {

using voxtrel::ovaccserver::Server;

constexpr std::chrono::seconds kTimeToEnd{2};
constexpr int kGaveUp = 2;

void WriteLine(std::string_view line)
{
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

// Reads the program's commands until the program is gone. Whatever holds up the server then, it ends.
void ReadCommands(Server& server)
{
    for (std::string line; std::getline(std::cin, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        server.Letters().Post(Server::Command{line});
    }
    server.Letters().Post(Server::EndOfInput{});
    std::this_thread::sleep_for(kTimeToEnd);
    std::_Exit(kGaveUp);
}

} // namespace

int main()
{
    using namespace voxtrel;

    platform::PrepareAccessibilityServer();
    const auto pointer = platform::MakeMousePointer();
    static Server server(*pointer, platform::MakeAccessibleSource, WriteLine);
    std::thread([] { ReadCommands(server); }).detach();
    const bool ended = server.Run();
    platform::EndAccessibilityServer();
    // The threads that look and read are still there: nothing of theirs is torn down.
    std::_Exit(ended ? EXIT_SUCCESS : kGaveUp);
}
