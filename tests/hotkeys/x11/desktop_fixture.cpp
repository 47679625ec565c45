#include "desktop_fixture.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace voxtrel::platform {

using namespace std::chrono_literals;

Child::Child(const std::vector<std::string>& command)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return;
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    process_ = fork();
    if (process_ == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
    fcntl(output_, F_SETFL, O_NONBLOCK);
}

Child::~Child()
{
    if (!HasEnded()) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(output_);
}

const std::string& Child::Output()
{
    char piece[4096];
    ssize_t size = 0;
    while ((size = read(output_, piece, sizeof piece)) > 0)
        text_.append(piece, static_cast<std::size_t>(size));
    return text_;
}

bool Child::HasEnded()
{
    if (!ended_ && waitpid(process_, nullptr, WNOHANG) == process_)
        ended_ = true;
    return ended_;
}

void Child::Signal(int number) const { kill(process_, number); }

bool X11Test::Until(const std::function<bool()>& condition, std::chrono::milliseconds patience)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        pollfd requests{clipboard.FileDescriptor(), POLLIN, 0};
        poll(&requests, 1, 5);
        clipboard.ServeRequests();
    }
    return true;
}

std::unique_ptr<Child> X11Test::StartTarget(std::vector<std::string> options, NativeWindow& window)
{
    options.insert(options.begin(), VOXTREL_TARGET_PROGRAM);
    auto target = std::make_unique<Child>(options);
    EXPECT_TRUE(Until([&] { return target->Output().find('\n') != std::string::npos; }))
        << "no target program";
    constexpr std::size_t kBehindWord = 7; // "window "
    window = std::stoul(target->Output().substr(kBehindWord));
    EXPECT_TRUE(Until([&] { return windows.HasFocus(window); })) << "the target does not come to the front";
    return target;
}

void X11Test::Fingers(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "xdotool");
    // On a nested display the user's keyboard is that of the display around it, and what is typed there gets
    // here some time later. The pointer's move comes behind the keys, so once it is seen they are there, too.
    const char* around = std::getenv("VOXTREL_DISPLAY_OF_USER");
    const int before = PointerX();
    if (around) {
        arguments.insert(arguments.begin(), {"env", std::string("DISPLAY=") + around});
        arguments.insert(arguments.end(), {"mousemove_relative", "--", before % 2 == 0 ? "1" : "-1", "0"});
    }
    Child fingers(arguments);
    EXPECT_TRUE(Until([&] { return fingers.HasEnded(); })) << "xdotool";
    EXPECT_TRUE(!around || Until([&] { return PointerX() != before; })) << "the pointer does not move";
}

int X11Test::PointerX()
{
    const auto cookie = xcb_query_pointer(connection_.Get(), connection_.Root());
    const XcbPtr<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection_.Get(), cookie, nullptr));
    return reply ? reply->root_x : -1;
}

std::string X11Test::Ask(const std::vector<std::string>& command)
{
    Child program(command);
    EXPECT_TRUE(Until([&] {
        program.Output();
        return program.HasEnded();
    })) << command.front();
    return program.Output();
}

bool X11Test::IsDown(int virtualKey)
{
    bool down = false;
    // Behind the millisecond that one look at the keyboard lasts.
    const auto looked = std::chrono::steady_clock::now();
    Until([&] { return std::chrono::steady_clock::now() - looked > 2ms; });
    down = keys.GetAsyncKeyState(virtualKey) < 0;
    return down;
}

} // namespace voxtrel::platform
