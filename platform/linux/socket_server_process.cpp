#include "platform/server_process.h"

#include "settings/file_path.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

extern char** environ;

namespace voxtrel::platform {
namespace {

// One socket is the server's input and output, so that a write to a server that is gone raises no signal
// here.
class SocketServerProcess final : public ServerProcess {
public:
    ~SocketServerProcess() override { Close(); }

    bool Start(const std::wstring& path) override
    {
        Kill();
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
            return false;
        const bool started = Spawn(settings::ToPath(path).native(), ends[1]);
        close(ends[1]);
        if (!started) {
            close(ends[0]);
            return false;
        }
        socket_ = ends[0];
        return true;
    }

    bool Running() override
    {
        if (process_ > 0 && waitpid(process_, nullptr, WNOHANG) != 0)
            process_ = 0;
        std::erase_if(killed_, [](pid_t process) { return waitpid(process, nullptr, WNOHANG) != 0; });
        return process_ > 0;
    }

    std::string Read() override
    {
        char bytes[65536];
        const ssize_t count = socket_ >= 0 ? recv(socket_, bytes, sizeof bytes, MSG_DONTWAIT) : 0;
        return count > 0 ? std::string(bytes, static_cast<std::size_t>(count)) : std::string();
    }

    void Write(std::string_view bytes) override
    {
        // A server that does not read its few commands is lost anyway.
        if (socket_ >= 0 && send(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL) < 0)
            Kill();
    }

    void Close() override
    {
        if (socket_ >= 0)
            close(socket_);
        socket_ = -1;
    }

    void Kill() override
    {
        Close();
        if (!Running())
            return;
        kill(process_, SIGKILL);
        // A killed process that still holds to something is collected when it lets go, or never; nobody
        // waits.
        Running();
        process_ = 0;
    }

private:
    bool Spawn(const std::string& path, int socket)
    {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, socket, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, socket, STDOUT_FILENO);
        char* arguments[] = {const_cast<char*>(path.c_str()), nullptr};
        const int failure = posix_spawn(&process_, path.c_str(), &actions, nullptr, arguments, environ);
        posix_spawn_file_actions_destroy(&actions);
        if (failure != 0)
            process_ = 0;
        return failure == 0;
    }

    int socket_ = -1;
    pid_t process_ = 0;
    std::vector<pid_t> killed_; // not yet gone
};

} // namespace

std::unique_ptr<ServerProcess> MakeServerProcess() { return std::make_unique<SocketServerProcess>(); }

} // namespace voxtrel::platform
