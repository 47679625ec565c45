#include "platform/linux/x11_clipboard_keeper.h"

#include "platform/linux/x11_clipboard.h"

#include <fcntl.h>
#include <unistd.h>

namespace voxtrel::platform {
namespace {

// Nobody who waits for the program's end or output is to wait for the keeper.
void LeaveTheProgram()
{
    setsid();
    if (chdir("/") != 0)
        _exit(1);
    const int nothing = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, standard);
    close_range(STDERR_FILENO + 1, ~0U, 0);
}

} // namespace

bool LeaveClipboardKeeper(const std::string& text)
{
    const pid_t keeper = fork();
    if (keeper != 0)
        return keeper > 0;
    LeaveTheProgram();
    X11Clipboard clipboard;
    clipboard.ServeUntilOthersCopy(text);
    _exit(0);
}

} // namespace voxtrel::platform
