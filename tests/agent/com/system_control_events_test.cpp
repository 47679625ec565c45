// What the control tells, and what happens when it does not answer.

#include "agent/com/driver_fixture.h"

#include <chrono>

namespace voxtrel::tests {
namespace {

using agent::ErrorCode;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

using SystemControlEvents = DriverTest;
using SystemControlHangs = DriverTest;

milliseconds TimeOf(const std::function<void()>& work)
{
    const auto begin = steady_clock::now();
    work();
    return std::chrono::duration_cast<milliseconds>(steady_clock::now() - begin);
}

TEST_F(SystemControlEvents, SpeakTellsRequestBalloonAndBookmarksInOrder)
{
    EXPECT_TRUE(Genie().Speak(L"\\mrk=100001\\one \\mrk=999999999\\ \\mrk=7\\").Ok());
    RunAll();
    EXPECT_EQ(events.lines,
              (Lines{L"RequestStart Speak", L"BalloonShow", L"Bookmark 100001", L"Bookmark 999999999",
                     L"Bookmark 7", L"RequestComplete Speak", L"BalloonHide"}));
}

TEST_F(SystemControlEvents, RequestsAreToldByTheirOwnNames)
{
    agent::Character& genie = Genie();
    EXPECT_TRUE(genie.Show().Ok());
    EXPECT_TRUE(genie.Play(L"wave").Ok());
    EXPECT_TRUE(genie.Hide().Ok());
    RunAll();
    EXPECT_EQ(events.lines,
              (Lines{L"RequestStart Show", L"RequestComplete Show", L"RequestStart Play wave",
                     L"RequestComplete Play wave", L"RequestStart Hide", L"RequestComplete Hide"}));
}

TEST_F(SystemControlEvents, PointerEventsComeWithTheirNumbers)
{
    Genie();
    FirePointer(L"Click", 1, 0, 10, -20);
    FirePointer(L"DblClick", 2, 7, 30, 40);
    FirePointer(L"DragStart", 4, 2, 1, 2);
    FirePointer(L"DragComplete", 0x2001, 0, 3, 4); // on the tray icon
    RunAll();
    EXPECT_EQ(events.lines, (Lines{L"Click genie 1 0 10 -20", L"DblClick genie 2 7 30 40",
                                   L"DragStart genie 4 2 1 2", L"DragComplete genie 1 0 3 4"}));
}

TEST_F(SystemControlEvents, OthersAreToldOrIgnored)
{
    Genie();
    Fire(L"ActivateInput", {Text(L"genie")});
    Fire(L"Show", {Text(L"genie"), Number(4)});
    Fire(L"IdleStart", {Text(L"genie")});
    Fire(L"IdleComplete", {Text(L"genie")});
    Fire(L"Bookmark", {}); // without its number
    RunAll();
    EXPECT_EQ(events.lines, (Lines{L"IdleStart", L"IdleComplete", L"Bookmark 0"}));
}

TEST_F(SystemControlEvents, NeverComeFromInsideACall)
{
    server.SetHasty(true);
    agent::Character& genie = Genie();
    events.insideACall = true;
    EXPECT_TRUE(genie.Speak(L"now \\mrk=3\\").Ok());
    events.insideACall = false;
    RunAll();
    EXPECT_FALSE(events.cameFromInsideACall);
    EXPECT_EQ(events.lines, (Lines{L"RequestStart Speak", L"BalloonShow", L"Bookmark 3",
                                   L"RequestComplete Speak", L"BalloonHide"}));
}

TEST_F(SystemControlEvents, StopAllWithdrawsTheBookmarksOfWhatWasSaid)
{
    agent::Character& genie = Genie();
    Fire(L"Bookmark", {Number(1)});
    Fire(L"Bookmark", {Number(2)});
    EXPECT_TRUE(genie.StopAll().Ok());
    EXPECT_TRUE(genie.Speak(L"\\mrk=3\\").Ok());
    RunAll();
    EXPECT_EQ(events.lines, (Lines{L"RequestStart Speak", L"BalloonShow", L"Bookmark 3",
                                   L"RequestComplete Speak", L"BalloonHide"}));
    EXPECT_EQ(Calls(), (Lines{L"genie.StopAll", L"genie.Speak \"\\mrk=3\\\""}));
}

TEST_F(SystemControlEvents, StoppedRequestsEndWithTheirReason)
{
    server.SetIdle(true);
    agent::Character& genie = Genie();
    EXPECT_TRUE(genie.Speak(L"never heard").Ok());
    EXPECT_TRUE(genie.StopAll().Ok());
    RunAll();
    EXPECT_EQ(events.lines, Lines{L"RequestComplete Speak: Interrupted."});
}

TEST_F(SystemControlEvents, AreFoundThroughTheLibraryOfAControlThatDoesNotDescribeItsClass)
{
    server.SetDescribed(Described::ByLibraryOnly);
    EXPECT_TRUE(Genie().Speak(L"\\mrk=3\\").Ok());
    EXPECT_TRUE(RunUntil([this] { return events.lines.size() == 5; }));
    EXPECT_EQ(events.lines.at(2), L"Bookmark 3");
}

TEST_F(SystemControlEvents, ControlWithoutDescriptionsWorksWithoutThem)
{
    server.SetDescribed(Described::NotAtAll);
    EXPECT_TRUE(Genie().Speak(L"\\mrk=3\\").Ok());
    EXPECT_EQ(Calls(), Lines{L"genie.Speak \"\\mrk=3\\\""});
}

TEST_F(SystemControlEvents, NobodyIsToldAfterTheEnd)
{
    agent::Character& genie = Genie();
    EXPECT_TRUE(genie.Speak(L"\\mrk=3\\").Ok());
    // The server's own messages are done before it answers the next call.
    EXPECT_EQ(genie.Top(), 0);
    control.reset();
    EXPECT_FALSE(RunUntil([this, begin = steady_clock::now()] {
                     return !events.lines.empty() || steady_clock::now() - begin > milliseconds(200);
                 }) &&
                 !events.lines.empty());
}

TEST_F(SystemControlHangs, CallEndsByItsDeadlineAndTheNextOnesDoNotWait)
{
    agent::Character& genie = Genie();
    EXPECT_TRUE(genie.SetTop(11).Ok());
    server.Hang(L"genie.Speak");
    agent::Result spoken;
    EXPECT_LT(TimeOf([&] { spoken = genie.Speak(L"one"); }), milliseconds(1500));
    EXPECT_EQ(spoken.code, ErrorCode::NoAnswer);
    EXPECT_EQ(spoken.description, L"The system's character control does not answer.");

    EXPECT_LT(TimeOf([&] {
                  EXPECT_EQ(genie.Top(), 11);
                  EXPECT_EQ(genie.Show().code, ErrorCode::NoAnswer);
                  EXPECT_EQ(genie.StopAll().code, ErrorCode::NoAnswer);
              }),
              milliseconds(200));
}

TEST_F(SystemControlHangs, ControlThatComesBackIsAskedInOrderForWhatItMissed)
{
    agent::Character& genie = Genie();
    server.Hang(L"genie.Speak");
    EXPECT_EQ(genie.Speak(L"one").code, ErrorCode::NoAnswer);
    EXPECT_EQ(genie.SetTop(5).code, ErrorCode::NoAnswer);
    EXPECT_EQ(genie.StopAll().code, ErrorCode::NoAnswer);
    EXPECT_EQ(genie.Left(), 0);
    server.Release();
    EXPECT_TRUE(RunUntil([&] { return genie.Show().Ok(); }));
    Lines calls = Calls();
    calls.resize(4);
    EXPECT_EQ(calls, (Lines{L"genie.Speak \"one\"", L"genie.Top = 5", L"genie.StopAll", L"genie.Show"}));
}

TEST_F(SystemControlHangs, ControlThatNeverConnectsIsGivenUp)
{
    server.Hang(L"Connected =");
    agent::MadeControl made;
    EXPECT_LT(TimeOf([&] { made = MakeControl(); }), milliseconds(7500));
    EXPECT_FALSE(made.control);
    EXPECT_EQ(made.result.code, ErrorCode::NoAnswer);
}

TEST_F(SystemControlHangs, CharacterThatIsLoadedTooLateIsUnloadedAgain)
{
    control = MakeControl().control;
    server.Hang(L"Characters.Load");
    EXPECT_EQ(control->Load(L"genie", file).code, ErrorCode::NoAnswer);
    EXPECT_EQ(control->Find(L"genie"), nullptr);
    ForgetCalls();
    server.Release();
    EXPECT_TRUE(RunUntil([this] { return Calls() == Lines{L"Characters.Unload \"genie\""}; }));
    EXPECT_TRUE(RunUntil([this] { return server.ObjectsAlive() == 2; })); // the control and its collection
}

TEST_F(SystemControlHangs, ProgramEndsAllTheSame)
{
    agent::Character& genie = Genie();
    server.Hang(L"genie.StopAll");
    EXPECT_EQ(genie.StopAll().code, ErrorCode::NoAnswer);
    EXPECT_LT(TimeOf([this] { control.reset(); }), milliseconds(1500));
    server.Release();
    EXPECT_TRUE(RunUntil([this] { return server.ObjectsAlive() == 0; }));
}

TEST_F(SystemControlHangs, MessagesThatOthersSendAreAnsweredMeanwhile)
{
    static bool answered;
    answered = false;
    const HWND window =
        CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(
        window, GWLP_WNDPROC,
        reinterpret_cast<LONG_PTR>(+[](HWND w, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
            answered = answered || message == WM_APP;
            return DefWindowProcW(w, message, wParam, lParam);
        }));
    agent::Character& genie = Genie();
    server.Hang(L"genie.Show");
    const HANDLE sender = CreateThread(
        nullptr, 0,
        [](void* to) -> DWORD {
            SendMessageW(static_cast<HWND>(to), WM_APP, 0, 0);
            return 0;
        },
        window, 0, nullptr);
    EXPECT_EQ(genie.Show().code, ErrorCode::NoAnswer);
    EXPECT_TRUE(answered);
    WaitForSingleObject(sender, 5000);
    CloseHandle(sender);
    DestroyWindow(window);
}

} // namespace
} // namespace voxtrel::tests
