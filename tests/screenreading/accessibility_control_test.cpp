#include "screenreading/accessibility_control.h"

#include "settings/string_numbers.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace voxtrel::screenreading {
namespace {

using namespace std::chrono_literals;
using platform::AccessibleObject;
using platform::SwitchState;

class FakeServer final : public platform::ServerProcess {
public:
    bool Start(const std::wstring& path) override
    {
        starts.push_back(path);
        sent.clear();
        running = !missing;
        return running;
    }
    bool Running() override { return running; }
    std::string Read() override { return std::exchange(output, {}); }
    void Write(std::string_view bytes) override { sent += bytes; }
    void Close() override { closed = true; }
    void Kill() override
    {
        ++kills;
        running = false;
    }

    std::vector<std::wstring> starts;
    std::string sent;
    std::string output;
    bool running = false;
    bool missing = false;
    bool closed = false;
    int kills = 0;
};

class AccessibilityControlTest : public testing::Test {
protected:
    AccessibilityControlTest()
    {
        strings.Set(settings::strings::kStateChecked, L"checked");
        strings.Set(settings::strings::kStatePressed, L"pressed");
    }

    void StartAndMonitor()
    {
        control.StartServer(L"/program/ovaccserver");
        control.StartMonitoring();
    }
    void Send(const AccessibleObject& object)
    {
        server.output += EncodeObject(object);
        control.Poll();
    }
    // Ticks until that much later, as the main window's timer does.
    void Let(std::chrono::milliseconds time, bool alive = true)
    {
        for (const auto end = now + time; now < end;) {
            now += 100ms;
            if (alive && server.running)
                server.output += "alive\n";
            control.Poll();
        }
    }
    std::vector<std::wstring> Texts() const
    {
        return {control.ObjectRole(), control.ObjectName(), control.ObjectValue()};
    }

    const std::vector<std::wstring> nothing{L"", L"", L""};
    std::chrono::steady_clock::time_point now{1000s};
    FakeServer server;
    settings::StringTable strings;
    AccessibilityControl control{server, strings, [this] { return now; }};
};

TEST_F(AccessibilityControlTest, KeepsWhatTheServerSentLastWithAClosingBlankEach)
{
    StartAndMonitor();
    EXPECT_EQ(server.sent, "start\n");
    EXPECT_EQ(Texts(), nothing);
    Send({L"Home", L"link", L"https://example.org/", SwitchState::None});
    EXPECT_EQ(Texts(), (std::vector<std::wstring>{L"link ", L"Home ", L"https://example.org/ "}));
    Let(3s);
    EXPECT_EQ(control.ObjectName(), L"Home ");
    Send({});
    EXPECT_EQ(Texts(), (std::vector<std::wstring>{L" ", L" ", L" "}));
}

TEST_F(AccessibilityControlTest, ReadingATextAsksNobody)
{
    StartAndMonitor();
    server.output = EncodeObject({L"Home", L"link", L"", SwitchState::None});
    EXPECT_EQ(Texts(), nothing);
    control.Poll();
    EXPECT_EQ(control.ObjectName(), L"Home ");
}

TEST_F(AccessibilityControlTest, SaysStatesInTheWordsOfTheStringTable)
{
    StartAndMonitor();
    Send({L"Bold", L"check box", L"", SwitchState::Checked});
    EXPECT_EQ(control.ObjectValue(), L"checked ");
    Send({L"Bold", L"toggle button", L"on the line", SwitchState::Pressed});
    EXPECT_EQ(control.ObjectValue(), L"on the line, pressed ");
}

TEST_F(AccessibilityControlTest, StartsOneServerHoweverOftenItIsAskedTo)
{
    StartAndMonitor();
    StartAndMonitor();
    EXPECT_EQ(server.starts, std::vector<std::wstring>{L"/program/ovaccserver"});
    EXPECT_EQ(server.sent, "start\n");
}

TEST_F(AccessibilityControlTest, StopsTheMonitoringAndNotTheServer)
{
    StartAndMonitor();
    Send({L"Home", L"link", L"", SwitchState::None});
    control.StopMonitoring();
    EXPECT_EQ(server.sent, "start\nstop\n");
    EXPECT_EQ(Texts(), nothing);
    Send({L"Late", L"link", L"", SwitchState::None});
    EXPECT_EQ(Texts(), nothing);
    Let(60s, false);
    EXPECT_TRUE(server.running) << "a server without work may be silent";
    control.StopMonitoring();
    EXPECT_EQ(server.sent, "start\nstop\n");
    control.StartMonitoring();
    Let(4s, false);
    EXPECT_TRUE(server.running);
    EXPECT_EQ(server.sent, "start\nstop\nstart\n");
}

TEST_F(AccessibilityControlTest, StopMonitoringAloneStartsNothing)
{
    control.StopMonitoring();
    Let(10s);
    EXPECT_TRUE(server.starts.empty());
    EXPECT_EQ(server.sent, "");
}

TEST_F(AccessibilityControlTest, StartsACrashedServerAgainAndForgetsItsObject)
{
    StartAndMonitor();
    Send({L"Home", L"link", L"", SwitchState::None});
    server.running = false;
    control.Poll();
    EXPECT_EQ(Texts(), nothing);
    EXPECT_EQ(server.starts.size(), 1u);
    Let(1s);
    EXPECT_EQ(server.starts.size(), 2u);
    EXPECT_EQ(server.sent, "start\n");
    Send({L"Open", L"link", L"", SwitchState::None});
    EXPECT_EQ(control.ObjectName(), L"Open ");
}

TEST_F(AccessibilityControlTest, PausesGrowWhileTheServerIsMissing)
{
    server.missing = true;
    StartAndMonitor();
    std::vector<std::chrono::seconds> pauses;
    auto last = now;
    while (pauses.size() < 9) {
        const std::size_t before = server.starts.size();
        while (server.starts.size() == before)
            Let(100ms);
        pauses.push_back(std::chrono::round<std::chrono::seconds>(now - last));
        last = now;
    }
    EXPECT_EQ(pauses, (std::vector<std::chrono::seconds>{1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s, 60s}));
    server.missing = false;
    Let(60s);
    EXPECT_TRUE(server.running);
    EXPECT_EQ(server.sent, "start\n");
}

TEST_F(AccessibilityControlTest, PausesAreShortAgainAfterAServerThatRanLong)
{
    StartAndMonitor();
    for (int crash = 0; crash < 5; ++crash) {
        server.running = false;
        Let(20s);
    }
    Let(90s);
    ASSERT_TRUE(server.running);
    const std::size_t before = server.starts.size();
    server.running = false;
    Let(1200ms);
    EXPECT_EQ(server.starts.size(), before + 1);
}

TEST_F(AccessibilityControlTest, TheUserCanStartAServerBeforeItsPauseIsOver)
{
    server.missing = true;
    StartAndMonitor();
    Let(20s);
    const std::size_t before = server.starts.size();
    server.missing = false;
    StartAndMonitor();
    EXPECT_EQ(server.starts.size(), before + 1);
    EXPECT_EQ(server.sent, "start\n");
}

TEST_F(AccessibilityControlTest, KillsAServerThatFallsSilent)
{
    StartAndMonitor();
    Send({L"Home", L"link", L"", SwitchState::None});
    Let(4900ms, false);
    EXPECT_EQ(server.kills, 0);
    Let(300ms, false);
    EXPECT_EQ(server.kills, 1);
    EXPECT_EQ(Texts(), nothing);
    Let(1500ms);
    EXPECT_EQ(server.starts.size(), 2u);
}

TEST_F(AccessibilityControlTest, ATickThatComesLateStillHearsTheServer)
{
    StartAndMonitor();
    now += 60s;
    server.output = "alive\n";
    control.Poll();
    EXPECT_EQ(server.kills, 0);
}

TEST_F(AccessibilityControlTest, ShutdownEndsTheServerForGood)
{
    StartAndMonitor();
    control.Shutdown();
    EXPECT_TRUE(server.closed);
    server.running = false;
    Let(200s);
    EXPECT_EQ(server.starts.size(), 1u);
    EXPECT_EQ(Texts(), nothing);
}

} // namespace
} // namespace voxtrel::screenreading
