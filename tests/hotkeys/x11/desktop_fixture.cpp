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

void X11Test::Fingers(const std::vector<std::string>& arguments)
{
    const auto fingers = StartFingers(arguments);
    EXPECT_TRUE(Until([&] { return fingers->HasEnded(); })) << "xdotool";
}

std::unique_ptr<Child> X11Test::StartFingers(const std::vector<std::string>& arguments)
{
    // On a nested display the user's keyboard is that of the display around it.
    const char* around = std::getenv("VOXTREL_DISPLAY_OF_USER");
    std::vector<std::string> command = {"env"};
    if (around)
        command.push_back(std::string("DISPLAY=") + around);
    command.push_back("xdotool");
    command.insert(command.end(), arguments.begin(), arguments.end());
    return std::make_unique<Child>(command);
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
