// The socket for commands, with clients that mean well and clients that do not.

#include "platform/command_channel.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <functional>
#include <future>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// A client that does what it is told, one step at a time, and never waits.
class Client {
public:
    explicit Client(const std::string& path)
        : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        connected_ = connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    ~Client() { close(socket_); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool IsConnected() const { return connected_; }

    // How much of it went out.
    std::size_t Send(std::string_view bytes) const
    {
        const ssize_t count = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    void Finish() const { shutdown(socket_, SHUT_WR); }

    // What came back; nothing when the server has not answered.
    std::string Answer() const
    {
        char bytes[16];
        const ssize_t count = recv(socket_, bytes, sizeof bytes, 0);
        return count > 0 ? std::string(bytes, static_cast<std::size_t>(count)) : std::string();
    }
    bool IsDropped() const
    {
        char byte = 0;
        return recv(socket_, &byte, 1, MSG_PEEK) == 0 || (errno != EAGAIN && errno != EINTR);
    }

private:
    int socket_;
    bool connected_ = false;
};

class UnixCommandChannelTest : public testing::Test {
protected:
    UnixCommandChannelTest()
    {
        std::string pattern = testing::TempDir() + "voxtrel-run-XXXXXX";
        folder_ = mkdtemp(pattern.data());
        setenv("XDG_RUNTIME_DIR", folder_.c_str(), 1);
        server = MakeCommandServer([this](std::wstring text) { commands.push_back(std::move(text)); });
        for (const auto& file : std::filesystem::recursive_directory_iterator(folder_)) {
            if (file.is_socket())
                path = file.path();
        }
    }
    ~UnixCommandChannelTest() override
    {
        server.reset();
        std::filesystem::remove_all(folder_);
    }

    // Runs the event loop until the condition holds, noting the longest time that one step of it took.
    bool Until(const std::function<bool()>& condition)
    {
        const auto deadline = Clock::now() + 60s;
        while (!condition()) {
            if (Clock::now() > deadline)
                return false;
            const auto begin = Clock::now();
            if (g_main_context_iteration(nullptr, FALSE))
                longestStep = std::max(longestStep, Clock::now() - begin);
            else
                std::this_thread::sleep_for(1ms);
        }
        return true;
    }

    // The whole text goes out, and the answer comes back.
    bool Execute(std::string_view bytes)
    {
        const Client client(path);
        EXPECT_TRUE(Until([&] {
            bytes.remove_prefix(client.Send(bytes));
            return bytes.empty();
        }));
        client.Finish();
        std::string answer;
        return Until([&] {
                   answer = client.Answer();
                   return !answer.empty() || client.IsDropped();
               }) &&
               answer == "ok\n";
    }

    // As the program's own command line sends it, from another thread as from another program.
    bool SendFromCommandLine(const wchar_t* command)
    {
        std::future<bool> sent = std::async(std::launch::async, [command] { return SendCommand(command); });
        EXPECT_TRUE(Until([&] { return sent.wait_for(0s) == std::future_status::ready; }));
        return sent.get();
    }

    using Texts = std::vector<std::wstring>;

    std::unique_ptr<CommandServer> server;
    std::string path;
    Texts commands;
    Clock::duration longestStep{};

private:
    std::string folder_;
};

TEST_F(UnixCommandChannelTest, TakesACommandOfTheCommandLine)
{
    ASSERT_TRUE(server);
    EXPECT_TRUE(SendFromCommandLine(L"1:Grüße \U0001F600"));
    EXPECT_EQ(commands, Texts{L"1:Grüße \U0001F600"});
}

TEST_F(UnixCommandChannelTest, AMegabyteOfTextArrivesWhole)
{
    const std::string text = "1:" + std::string(1 << 20, 'x');
    EXPECT_TRUE(Execute(text));
    EXPECT_EQ(commands, Texts{std::wstring(text.begin(), text.end())});
    EXPECT_LT(longestStep, 100ms);
}

TEST_F(UnixCommandChannelTest, BytesThatAreNoTextAreReplacedAndAccepted)
{
    EXPECT_TRUE(Execute("1:\xFF\xC3(\xED\xA0\x80"));
    EXPECT_TRUE(Execute(std::string_view("1:a\0b", 5)));
    EXPECT_TRUE(Execute("\xFE"));
    EXPECT_TRUE(Execute(""));
    ASSERT_EQ(commands.size(), 4u);
    EXPECT_EQ(commands[0], L"1:\uFFFD\uFFFD(\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(commands[1], std::wstring(L"1:a\0b", 5));
}

TEST_F(UnixCommandChannelTest, AThousandCommandsAtOnceAreAllTaken)
{
    constexpr std::size_t kCommands = 1000;
    std::size_t answered = 0;
    std::thread clients([&] {
        for (std::size_t i = 0; i < kCommands; ++i)
            answered += SendCommand(L"1:" + std::to_wstring(i)) ? 1 : 0;
    });
    EXPECT_TRUE(Until([&] { return commands.size() == kCommands; }));
    clients.join();
    EXPECT_EQ(answered, kCommands);
    EXPECT_LT(longestStep, 100ms);
}

TEST_F(UnixCommandChannelTest, ClientsThatNeverDisconnectKeepNobodyOut)
{
    // As many as this process may open.
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = std::min<rlim_t>(files.rlim_max, 4096);
    setrlimit(RLIMIT_NOFILE, &files);
    std::vector<std::unique_ptr<Client>> idle;
    for (int i = 0; i < 1000; ++i) {
        idle.push_back(std::make_unique<Client>(path));
        ASSERT_TRUE(idle.back()->IsConnected()) << i;
        idle.back()->Send("1:never finished");
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
    }
    const auto begin = Clock::now();
    EXPECT_TRUE(SendFromCommandLine(L"1:mine"));
    EXPECT_LT(Clock::now() - begin, 2s);
    EXPECT_EQ(commands, Texts{L"1:mine"});
}

TEST_F(UnixCommandChannelTest, AClientThatDoesNotWaitForItsAnswerIsHeard)
{
    {
        const Client client(path);
        client.Send("1:in a hurry");
    }
    EXPECT_TRUE(Until([&] { return commands == Texts{L"1:in a hurry"}; }));
}

TEST_F(UnixCommandChannelTest, WhoeverSendsWithoutEndIsDropped)
{
    const Client patient(path);
    patient.Send("1:half");
    const Client endless(path);
    const std::string piece(1 << 16, 'x');
    EXPECT_TRUE(Until([&] {
        endless.Send(piece);
        return endless.IsDropped();
    }));
    EXPECT_LT(longestStep, 200ms);
    patient.Send(" and half");
    patient.Finish();
    EXPECT_TRUE(Until([&] { return commands == Texts{L"1:half and half"}; }));
}

TEST_F(UnixCommandChannelTest, ManyLongTextsAtOnceDoNotFillTheMemory)
{
    const Client patient(path);
    patient.Send("1:half");
    // Each of them alone could still be a command.
    constexpr std::size_t kEach = 20u << 20;
    const std::string piece(1 << 16, 'x');
    std::vector<std::unique_ptr<Client>> clients;
    std::vector<std::size_t> sent(8);
    for (std::size_t i = 0; i < sent.size(); ++i)
        clients.push_back(std::make_unique<Client>(path));
    EXPECT_TRUE(Until([&] {
        bool done = true;
        for (std::size_t i = 0; i < sent.size(); ++i) {
            if (sent[i] < kEach && !clients[i]->IsDropped()) {
                sent[i] += clients[i]->Send(piece);
                done = false;
            }
        }
        return done;
    }));
    EXPECT_GE(std::ranges::count_if(clients, [](const auto& client) { return client->IsDropped(); }), 4);
    patient.Send(" and half");
    patient.Finish();
    EXPECT_TRUE(Until([&] { return commands == Texts{L"1:half and half"}; }));
}

} // namespace
} // namespace voxtrel::platform
