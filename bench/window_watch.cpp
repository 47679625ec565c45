// window_watch SECONDS COMMAND...: starts a program and prints the milliseconds until its window of 128 by 128 pixels
// is on the screen; then leaves it alone for so many seconds and prints the share of a core it used meanwhile, in
// percent, and its resident memory, in MiB. Ends the program afterwards.

#include <X11/Xlib.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kSide = 128;
constexpr double kPatienceMs = 30000;

double MillisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

bool WaitForWindow(Display* display, Clock::time_point start)
{
    while (MillisecondsSince(start) < kPatienceMs) {
        pollfd entry{ConnectionNumber(display), POLLIN, 0};
        if (!XPending(display))
            poll(&entry, 1, 100);
        while (XPending(display)) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type != MapNotify)
                continue;
            XWindowAttributes attributes{};
            if (XGetWindowAttributes(display, event.xmap.window, &attributes) && attributes.width == kSide &&
                attributes.height == kSide)
                return true;
        }
    }
    return false;
}

double CpuSeconds(pid_t process)
{
    std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(stat, text);
    unsigned long user = 0;
    unsigned long system = 0;
    std::sscanf(text.c_str() + text.rfind(')') + 2,
                "%*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu", &user, &system);
    return static_cast<double>(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double ResidentMiB(pid_t process)
{
    std::ifstream statm("/proc/" + std::to_string(process) + "/statm");
    long size = 0;
    long resident = 0;
    statm >> size >> resident;
    return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

int IgnoreError(Display*, XErrorEvent*) { return 0; }

} // namespace

int main(int argc, char** argv)
{
    Display* display = XOpenDisplay(nullptr);
    if (argc < 3 || !display)
        return 2;
    XSetErrorHandler(&IgnoreError);
    XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
    XSync(display, False);
    const Clock::time_point start = Clock::now();
    const pid_t program = fork();
    if (program == 0) {
        execvp(argv[2], argv + 2);
        _exit(127);
    }
    const bool seen = WaitForWindow(display, start);
    std::printf("visible_ms %.1f\n", seen ? MillisecondsSince(start) : -1.0);
    const int seconds = std::atoi(argv[1]);
    if (seconds > 0) {
        sleep(3); // what start-up still does is no idling
        const double before = CpuSeconds(program);
        sleep(static_cast<unsigned>(seconds));
        std::printf("cpu_percent %.2f\nresident_mib %.1f\n", 100 * (CpuSeconds(program) - before) / seconds,
                    ResidentMiB(program));
    }
    kill(program, SIGTERM);
    waitpid(program, nullptr, 0);
    return seen ? 0 : 1;
}
