// The server with a pointer and objects of the test's own, in real time: what waits here waits for a
// condition.

#include "ovaccserver/server.h"

#include "screenreading/server_protocol.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace voxtrel::ovaccserver {
namespace {

using namespace std::chrono_literals;
using platform::AccessibleObject;
using platform::ScreenPoint;
using platform::SwitchState;

constexpr ScreenPoint kButton{10, 10};
constexpr ScreenPoint kFrozen{20, 20};  // a program that never answers; the call comes back late
constexpr ScreenPoint kForever{30, 30}; // and one whose call comes back only when the test ends
constexpr ScreenPoint kNowhere{40, 40};

// Shared by the test and the threads that look; the last of them lets it go.
struct Desktop {
    std::atomic<ScreenPoint> pointer{kNowhere};
    std::atomic<int> looks{0};
    std::promise<void> over;
    std::shared_future<void> isOver{over.get_future()};
};

class FakePointer final : public platform::MousePointer {
public:
    explicit FakePointer(Desktop& desktop) : desktop_(desktop) {}
    std::optional<platform::PointerState> State() override
    {
        return platform::PointerState{desktop_.pointer.load(), false};
    }

private:
    Desktop& desktop_;
};

class FakeSource final : public platform::AccessibleSource {
public:
    explicit FakeSource(std::shared_ptr<Desktop> desktop) : desktop_(std::move(desktop)) {}

    std::optional<AccessibleObject> ObjectAt(ScreenPoint point, std::chrono::milliseconds deadline) override
    {
        ++desktop_->looks;
        if (point == kFrozen) {
            desktop_->isOver.wait_for(deadline + 300ms);
            return AccessibleObject{L"Too late", L"push button", L"", SwitchState::None};
        }
        if (point == kForever)
            desktop_->isOver.wait();
        if (point == kButton)
            return AccessibleObject{L"Save", L"push button", L"", SwitchState::None};
        return AccessibleObject{};
    }

private:
    std::shared_ptr<Desktop> desktop_;
};

class ServerTest : public testing::Test {
protected:
    ServerTest() : thread_([this] { ended = server.Run(); }) {}
    ~ServerTest() override
    {
        if (thread_.joinable())
            End();
    }

    void End()
    {
        desktop->over.set_value();
        server.Letters().Post(Server::EndOfInput{});
        thread_.join();
    }
    void Tell(const char* command) { server.Letters().Post(Server::Command{command}); }

    std::string Written()
    {
        const std::lock_guard lock(mutex_);
        return written_;
    }
    void Forget()
    {
        const std::lock_guard lock(mutex_);
        written_.clear();
    }
    static bool Comes(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + 30s;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            std::this_thread::sleep_for(1ms);
        }
        return true;
    }
    bool Waits(const std::string& text)
    {
        return Comes([&] { return Written().find(text) != std::string::npos; });
    }
    bool LooksAtLeast(int times)
    {
        return Comes([&] { return desktop->looks >= times; });
    }

    const std::string save = "object\tpush button\tSave\t\t-\n";
    const std::string nothing = "object\t\t\t\t-\n";
    const std::string alive = "alive\n";

    std::shared_ptr<Desktop> desktop = std::make_shared<Desktop>();
    FakePointer pointer{*desktop};
    Server server{pointer, [desktop = desktop] { return std::make_unique<FakeSource>(desktop); },
                  [this](std::string_view line) {
                      const std::lock_guard lock(mutex_);
                      written_ += line;
                  }};
    std::atomic<bool> ended{false};

private:
    std::mutex mutex_;
    std::string written_;
    std::thread thread_;
};

TEST_F(ServerTest, SaysNothingUntilItIsToldTo)
{
    desktop->pointer = kButton;
    Tell("nonsense");
    End();
    EXPECT_EQ(Written(), "");
    EXPECT_EQ(desktop->looks, 0);
    EXPECT_TRUE(ended);
}

TEST_F(ServerTest, ReportsWhatThePointerRestsOnOnce)
{
    Tell("start");
    ASSERT_TRUE(Waits(nothing));
    desktop->pointer = kButton;
    ASSERT_TRUE(Waits(save));
    ASSERT_TRUE(Waits(alive));
    ASSERT_TRUE(LooksAtLeast(desktop->looks + 2)) << "it goes on looking";
    End();
    EXPECT_EQ(Written().find(save, Written().find(save) + 1), std::string::npos);
}

TEST_F(ServerTest, ReportsTheSameObjectAgainAfterAStop)
{
    desktop->pointer = kButton;
    Tell("start");
    ASSERT_TRUE(Waits(save));
    Tell("stop");
    Tell("start");
    Forget();
    EXPECT_TRUE(Waits(save));
}

TEST_F(ServerTest, ReportsNothingForAProgramThatMissesItsDeadline)
{
    desktop->pointer = kButton;
    Tell("start");
    ASSERT_TRUE(Waits(save));
    Forget();
    const auto moved = std::chrono::steady_clock::now();
    desktop->pointer = kFrozen;
    ASSERT_TRUE(Waits(nothing));
    EXPECT_LT(std::chrono::steady_clock::now() - moved, Server::kDeadline + 300ms);
    ASSERT_TRUE(Waits("Too late")) << "it did answer in the end";
    desktop->pointer = kButton;
    Forget();
    EXPECT_TRUE(Waits(save));
}

TEST_F(ServerTest, LeavesALookBehindThatNeverEnds)
{
    desktop->pointer = kForever;
    Tell("start");
    ASSERT_TRUE(Waits(nothing));
    ASSERT_TRUE(Waits(alive)) << "the server itself is not held up";
    ASSERT_TRUE(LooksAtLeast(2)) << "on a new thread";
    desktop->pointer = kButton;
    EXPECT_TRUE(Waits(save));
}

} // namespace
} // namespace voxtrel::ovaccserver
