#include "agent/voices/linux/ssip_connection.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <future>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

extern char** environ;

namespace voxtrel::agent::voices {

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr std::size_t kMostBuffered = 16 << 20; // the longest lists of voices have a megabyte

// The service of this user; another can be named as the service's own clients name it.
std::string SocketPath()
{
    constexpr std::string_view kUnix = "unix_socket:";
    const char* address = std::getenv("SPEECHD_ADDRESS");
    if (address && std::string_view(address).starts_with(kUnix))
        return address + kUnix.size();
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    const char* home = std::getenv("HOME");
    const std::string runtime = folder ? folder : home ? std::string(home) + "/.cache" : std::string();
    return runtime.empty() ? runtime : runtime + "/speech-dispatcher/speechd.sock";
}

// Waits until the socket can be read or written.
bool Ready(int socket, short what, steady_clock::time_point until)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - steady_clock::now()).count();
    pollfd watched{.fd = socket, .events = what, .revents = 0};
    return poll(&watched, 1, static_cast<int>(std::max<std::int64_t>(left, 0))) > 0;
}

} // namespace

std::unique_ptr<SsipConnection> SsipConnection::Open(Milliseconds limit)
{
    const std::string path = SocketPath();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path)
        return nullptr;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0)
        return nullptr;
    std::unique_ptr<SsipConnection> connection(new SsipConnection(socket));
    if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return nullptr;
    const auto named = connection->Ask("SET self CLIENT_NAME user:voxtrel:speech", limit);
    return named && named->Done() ? std::move(connection) : nullptr;
}

SsipConnection::~SsipConnection() { close(socket_); }

std::optional<SsipMessage> SsipConnection::Ask(std::string_view line, Milliseconds limit)
{
    const auto until = steady_clock::now() + limit;
    if (!Send(std::string(line) + "\r\n", until))
        return std::nullopt;
    while (std::optional<SsipMessage> message = NextMessage(until)) {
        if (!message->IsEvent())
            return message;
        events_.push_back(std::move(*message));
    }
    gone_ = true;
    return std::nullopt;
}

std::optional<SsipMessage> SsipConnection::NextEvent(Milliseconds limit)
{
    if (!events_.empty()) {
        SsipMessage event = std::move(events_.front());
        events_.pop_front();
        return event;
    }
    const auto until = steady_clock::now() + limit;
    while (std::optional<SsipMessage> message = NextMessage(until)) {
        if (message->IsEvent()) // an answer is one that nobody waited for
            return message;
    }
    return std::nullopt;
}

bool SsipConnection::Send(std::string_view bytes, TimePoint until)
{
    while (!bytes.empty() && !gone_) {
        const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent > 0)
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        else if (errno != EINTR && (errno != EAGAIN || !Ready(socket_, POLLOUT, until)))
            gone_ = true;
    }
    return !gone_;
}

std::optional<SsipMessage> SsipConnection::NextMessage(TimePoint until)
{
    while (true) {
        if (std::optional<SsipMessage> message = TakeMessage())
            return message;
        if (!Receive(until))
            return std::nullopt;
    }
}

// "251-a line", then "251 the last one".
std::optional<SsipMessage> SsipConnection::TakeMessage()
{
    std::size_t end = 0;
    for (std::size_t at = 0; (end = received_.find("\r\n", at)) != std::string::npos; at = end + 2) {
        const std::string line = received_.substr(at, end - at);
        if (line.size() < 3)
            continue;
        incoming_.code = std::atoi(line.substr(0, 3).c_str());
        incoming_.lines.push_back(line.substr(std::min<std::size_t>(4, line.size())));
        if (line.size() > 3 && line[3] == '-')
            continue;
        received_.erase(0, end + 2);
        return std::exchange(incoming_, {});
    }
    received_.erase(0, received_.rfind('\n') == std::string::npos ? 0 : received_.rfind('\n') + 1);
    return std::nullopt;
}

bool SsipConnection::Receive(TimePoint until)
{
    if (gone_ || !Ready(socket_, POLLIN, until))
        return false;
    char bytes[65536];
    const ssize_t count = recv(socket_, bytes, sizeof bytes, 0);
    if (count > 0)
        received_.append(bytes, static_cast<std::size_t>(count));
    gone_ =
        count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR) || received_.size() > kMostBuffered;
    return !gone_;
}

void StartSpeechService(std::chrono::milliseconds limit)
{
    char program[] = "speech-dispatcher", spawn[] = "--spawn";
    char* arguments[] = {program, spawn, nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const bool started = posix_spawnp(&child, program, &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    if (!started)
        return;
    // The program leaves when its server runs in the background.
    std::packaged_task<void()> leaving([child] { waitpid(child, nullptr, 0); });
    const std::future<void> left = leaving.get_future();
    std::thread(std::move(leaving)).detach();
    left.wait_for(limit);
}

} // namespace voxtrel::agent::voices
