// Commands from other programs over a socket that only this user can reach.
//
// A client connects, sends one command string as UTF-8, closes its sending side and reads the answer: "ok"
// and a line feed once the command was accepted. The server never waits for a client: bytes are taken when
// they are there. A connection that is too slow is dropped; when there are too many the oldest goes, and when
// all of them together hold too many bytes, the longest: a client that wants no harm is neither.

#include "platform/command_channel.h"
#include "platform/linux/runtime_folder.h"
#include "settings/text_case.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <glib-unix.h>
#include <map>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace voxtrel::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMaxBytes = 64u << 20; // of one connection or of all together
constexpr std::size_t kMaxConnections = 32;
constexpr auto kConnectionDeadline = std::chrono::seconds(30);
constexpr guint kDeadlineCheckSeconds = 5;
constexpr auto kSendDeadline = std::chrono::seconds(5);
constexpr std::string_view kAccepted = "ok\n";

bool FillAddress(sockaddr_un& address)
{
    const std::string folder = RuntimeFolder();
    const std::string path = folder + "/voxtrel.socket";
    if (folder.empty() || path.size() >= sizeof address.sun_path)
        return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return true;
}

class UnixCommandServer final : public CommandServer {
public:
    explicit UnixCommandServer(std::function<void(std::wstring)> handle) : handle_(std::move(handle)) {}

    ~UnixCommandServer() override
    {
        for (const auto& [socket, connection] : connections_) {
            g_source_remove(connection.source);
            close(socket);
        }
        if (deadlineSource_)
            g_source_remove(deadlineSource_);
        if (listenerSource_)
            g_source_remove(listenerSource_);
        if (listener_ >= 0) {
            close(listener_);
            unlink(path_.c_str());
        }
    }

    bool Listen()
    {
        sockaddr_un address{};
        if (!FillAddress(address))
            return false;
        path_ = address.sun_path;
        listener_ = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        // The instance lock is ours, so a socket left here belongs to a program that was killed.
        unlink(path_.c_str());
        if (listener_ < 0 || bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
            listen(listener_, SOMAXCONN) != 0)
            return false;
        listenerSource_ = Watch(listener_, G_IO_IN, &OnClient);
        deadlineSource_ = g_timeout_add_seconds(kDeadlineCheckSeconds, &OnDeadlineCheck, this);
        return true;
    }

private:
    struct Connection {
        guint source = 0;
        std::string bytes;
        Clock::time_point deadline;
    };

    static gboolean OnClient(gint, GIOCondition, gpointer self)
    {
        static_cast<UnixCommandServer*>(self)->Accept();
        return G_SOURCE_CONTINUE;
    }

    static gboolean OnBytes(gint socket, GIOCondition, gpointer self)
    {
        static_cast<UnixCommandServer*>(self)->Receive(socket);
        return G_SOURCE_CONTINUE;
    }

    static gboolean OnDeadlineCheck(gpointer self)
    {
        static_cast<UnixCommandServer*>(self)->DropLate();
        return G_SOURCE_CONTINUE;
    }

    // Behind what the user does and sees: a flood of commands stops neither.
    guint Watch(int socket, GIOCondition condition, GUnixFDSourceFunc handler)
    {
        return g_unix_fd_add_full(G_PRIORITY_DEFAULT_IDLE, socket, condition, handler, this, nullptr);
    }

    void Accept()
    {
        const int client = accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (client < 0)
            return;
        Connection& connection = connections_[client];
        connection.deadline = Clock::now() + kConnectionDeadline;
        connection.source = Watch(client, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), &OnBytes);
        if (connections_.size() > kMaxConnections)
            Drop(std::ranges::min_element(connections_, {}, [](const auto& entry) {
                     return entry.second.deadline;
                 })->first);
    }

    void Receive(int client)
    {
        Connection& connection = connections_[client];
        std::array<char, 65536> chunk{};
        const ssize_t count = read(client, chunk.data(), chunk.size());
        if (count > 0) {
            connection.bytes.append(chunk.data(), static_cast<std::size_t>(count));
            bytesHeld_ += static_cast<std::size_t>(count);
            if (bytesHeld_ > kMaxBytes)
                DropLongest();
            return;
        }
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        const bool complete = count == 0;
        const std::string bytes = std::exchange(connection.bytes, {});
        bytesHeld_ -= bytes.size();
        if (complete)
            send(client, kAccepted.data(), kAccepted.size(), MSG_NOSIGNAL);
        Drop(client);
        if (complete)
            handle_(settings::FromUtf8(bytes));
    }

    void Drop(int client)
    {
        const auto found = connections_.find(client);
        bytesHeld_ -= found->second.bytes.size();
        g_source_remove(found->second.source);
        connections_.erase(found);
        close(client);
    }

    void DropLongest()
    {
        Drop(std::ranges::max_element(connections_, {}, [](const auto& entry) {
                 return entry.second.bytes.size();
             })->first);
    }

    void DropLate()
    {
        const Clock::time_point now = Clock::now();
        for (auto next = connections_.begin(); next != connections_.end();) {
            const auto current = next++;
            if (current->second.deadline < now)
                Drop(current->first);
        }
    }

    std::function<void(std::wstring)> handle_;
    std::string path_;
    int listener_ = -1;
    guint listenerSource_ = 0;
    guint deadlineSource_ = 0;
    std::map<int, Connection> connections_;
    std::size_t bytesHeld_ = 0; // by all connections
};

// Waits until the socket can be read or written, or the deadline has passed.
bool WaitFor(int socket, short events, Clock::time_point deadline)
{
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd entry{socket, events, 0};
    return left > 0 && poll(&entry, 1, static_cast<int>(left)) == 1;
}

// The connected socket, or -1.
int Connect()
{
    sockaddr_un address{};
    if (!FillAddress(address))
        return -1;
    const int client = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (client >= 0 && connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
        return client;
    close(client);
    return -1;
}

bool Transfer(int client, std::string_view bytes, Clock::time_point deadline)
{
    while (!bytes.empty()) {
        const ssize_t count = send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EAGAIN || !WaitFor(client, POLLOUT, deadline))
            return false;
    }
    shutdown(client, SHUT_WR);
    char answer[8] = {};
    return WaitFor(client, POLLIN, deadline) && read(client, answer, sizeof answer) > 0 &&
           std::string_view(answer) == kAccepted;
}

} // namespace

std::unique_ptr<CommandServer> MakeCommandServer(std::function<void(std::wstring)> handle)
{
    auto server = std::make_unique<UnixCommandServer>(std::move(handle));
    if (!server->Listen())
        return nullptr;
    return server;
}

bool SendCommand(std::wstring_view command)
{
    constexpr int kRetryMs = 20;
    const std::string bytes = settings::ToUtf8(command);
    const Clock::time_point deadline = Clock::now() + kSendDeadline;
    // The running program holds its lock a moment before its socket is there, and drops a connection that is
    // one too many; what has no answer was not taken.
    for (;;) {
        const int client = Connect();
        const bool taken = client >= 0 && Transfer(client, bytes, deadline);
        if (client >= 0)
            close(client);
        if (taken || Clock::now() >= deadline)
            return taken;
        poll(nullptr, 0, kRetryMs);
    }
}

} // namespace voxtrel::platform
