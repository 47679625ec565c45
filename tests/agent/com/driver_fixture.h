#pragma once

#include "agent/com/test_server.h"
#include "agent/system_control.h"

#include <gtest/gtest.h>

#include <chrono>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace voxtrel::tests {

using Lines = std::vector<std::wstring>;

// Writes down what the client is told, a line each.
class RecordedEvents final : public agent::ControlEvents {
public:
    void Bookmark(std::int32_t number) override { Add(L"Bookmark " + std::to_wstring(number)); }
    void Click(const agent::PointerEvent& event) override { AddPointer(L"Click", event); }
    void DblClick(const agent::PointerEvent& event) override { AddPointer(L"DblClick", event); }
    void DragStart(const agent::PointerEvent& event) override { AddPointer(L"DragStart", event); }
    void DragComplete(const agent::PointerEvent& event) override { AddPointer(L"DragComplete", event); }
    void RequestStart(std::wstring_view request) override { Add(L"RequestStart " + std::wstring(request)); }
    void RequestComplete(std::wstring_view request, const agent::Result& result) override
    {
        Add(L"RequestComplete " + std::wstring(request) + (result.Ok() ? L"" : L": " + result.description));
    }
    void BalloonShow() override { Add(L"BalloonShow"); }
    void BalloonHide() override { Add(L"BalloonHide"); }
    void IdleStart() override { Add(L"IdleStart"); }
    void IdleComplete() override { Add(L"IdleComplete"); }

    Lines lines;
    bool insideACall = false; // set by a test while it calls the control
    bool cameFromInsideACall = false;

private:
    void Add(std::wstring line)
    {
        cameFromInsideACall = cameFromInsideACall || insideACall;
        lines.push_back(std::move(line));
    }
    void AddPointer(const wchar_t* name, const agent::PointerEvent& event);
};

// A thread like that of a user interface, with the test server registered as the system's control.
class DriverTest : public testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();

    DriverTest();
    ~DriverTest() override;

    agent::MadeControl MakeControl();
    // A control with the character "genie" loaded and its calls forgotten until then.
    agent::Character& Genie();

    // What the server was asked since the last time.
    Lines Calls();
    void ForgetCalls() { Calls(); }

    // Runs what was posted to this thread until condition holds; false after five seconds.
    bool RunUntil(const std::function<bool()>& condition);
    // Runs it until the server has carried out everything that it was sent before.
    void RunAll();

    void Fire(const wchar_t* event, const std::vector<VARIANT>& arguments = {});
    void FirePointer(const wchar_t* event, short button, short shift, short x, short y);

    TestServer& server;
    RecordedEvents events;
    std::wstring file; // some file that exists
    std::unique_ptr<agent::Control> control;

private:
    void Post(std::function<void()> work);
    bool RunOne(std::chrono::milliseconds patience);

    std::mutex mutex_;
    std::deque<std::function<void()>> posted_;
    HANDLE arrived_;
    std::size_t callsSeen_ = 0;
};

VARIANT Text(const wchar_t* text);
VARIANT Number(long number);
VARIANT Short(short number);

} // namespace voxtrel::tests
