// Selection requests made to windows of other threads, through the system's own keyboard and clipboard.

#include "fingers.h"
#include "target_window.h"

#include "hotkeys/selection.h"
#include "platform/selection_ports.h"
#include "platform/windows/windows_headers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatienceOfACall = 1000ms;

class WindowsSelectionTest : public ::testing::Test {
protected:
    WindowsSelectionTest() { EXPECT_TRUE(ports.clipboard->SetText(L"mine", kPatienceOfACall)); }
    ~WindowsSelectionTest() override
    {
        if (!held_.empty())
            fingers::LetGo({VK_LCONTROL, VK_LSHIFT, VK_RSHIFT, VK_F3});
    }

    static void Pump()
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }

    template <typename Condition> static bool Until(Condition condition)
    {
        const auto deadline = std::chrono::steady_clock::now() + 20s;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > deadline)
                return false;
            Pump();
            Sleep(5);
        }
        return true;
    }

    std::unique_ptr<TargetWindow> Start(TargetWindow::Habits habits)
    {
        auto target = std::make_unique<TargetWindow>(std::move(habits));
        EXPECT_TRUE(Until([&] {
            ports.windows->SetForegroundWindow(target->Handle());
            return ports.windows->GetForegroundWindow() == target->Handle();
        })) << "the target does not come to the front";
        return target;
    }

    std::vector<std::wstring> SpeakSelection()
    {
        heard.clear();
        selection.UpdateTargetWindow();
        const auto begin = std::chrono::steady_clock::now();
        selection.RunHotKey(1);
        took = std::chrono::steady_clock::now() - begin;
        return heard;
    }

    std::optional<std::wstring> OnClipboard() { return ports.clipboard->GetText(kPatienceOfACall); }

    void Hold(std::initializer_list<WORD> held)
    {
        held_ = held;
        fingers::Press(held);
        EXPECT_TRUE(
            Until([&] { return std::ranges::all_of(held, [this](WORD key) { return IsDown(key); }); }));
    }
    void Release(std::initializer_list<WORD> held)
    {
        held_.clear();
        fingers::LetGo(held);
        EXPECT_TRUE(
            Until([&] { return std::ranges::none_of(held, [this](WORD key) { return IsDown(key); }); }));
    }

    bool IsDown(int key) { return ports.keyboard->GetAsyncKeyState(key) < 0; }

    using Texts = std::vector<std::wstring>;

    SelectionPorts ports = MakeSelectionPorts();
    Texts heard;
    std::chrono::steady_clock::duration took{};
    hotkeys::Selection selection{{*ports.windows, *ports.clipboard, *ports.keystrokes, [] { Pump(); },
                                  [this](std::wstring text) { heard.push_back(std::move(text)); },
                                  [this](std::wstring text) { heard.push_back(std::move(text)); }, [] {},
                                  [](NativeWindow, std::wstring_view) {}}};

private:
    std::vector<WORD> held_;
};

TEST_F(WindowsSelectionTest, SpeaksWhatIsCopiedOnCtrlInsert)
{
    const auto target = Start({});
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    EXPECT_EQ(OnClipboard(), L"mine");
    EXPECT_EQ(target->Keys(), std::vector<std::string>{"Ctrl+Insert"});
    EXPECT_FALSE(IsDown(VK_CONTROL));
}

TEST_F(WindowsSelectionTest, SpeaksWhatIsCopiedOnCtrlCOnly)
{
    const auto target = Start({.copiesOnInsert = false});
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    EXPECT_EQ(OnClipboard(), L"mine");
}

TEST_F(WindowsSelectionTest, SpeaksWhatIsCopiedOnTheCopyMessageOnly)
{
    const auto target = Start({.copiesOnInsert = false, .copiesOnC = false, .copiesOnMessage = true});
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    EXPECT_EQ(OnClipboard(), L"mine");
}

TEST_F(WindowsSelectionTest, ATargetThatNeverCopies)
{
    const auto target = Start({.copiesOnInsert = false, .copiesOnC = false});
    EXPECT_EQ(SpeakSelection(), Texts{});
    EXPECT_EQ(OnClipboard(), L"mine");
    EXPECT_EQ(target->Keys(), (std::vector<std::string>{"Ctrl+Insert", "Ctrl+C"}));
}

TEST_F(WindowsSelectionTest, AHungTargetGetsNoKeyAndCostsABoundedTime)
{
    const auto target = Start({});
    target->Hang();
    EXPECT_TRUE(Until([&] { return ports.windows->IsHungAppWindow(target->Handle()); }));
    EXPECT_EQ(SpeakSelection(), Texts{});
    EXPECT_LT(took, 5s);
    EXPECT_EQ(OnClipboard(), L"mine");
    target->Wake();
    EXPECT_TRUE(Until([&] { return !ports.windows->IsHungAppWindow(target->Handle()); }));
    EXPECT_TRUE(target->Keys().empty());
    EXPECT_EQ(OnClipboard(), L"mine");
}

TEST_F(WindowsSelectionTest, ATargetThatHangsOnTheKeystroke)
{
    const auto target = Start({.hangsOnKey = true});
    EXPECT_EQ(SpeakSelection(), Texts{});
    EXPECT_LT(took, 8s);
    EXPECT_EQ(OnClipboard(), L"mine");
}

TEST_F(WindowsSelectionTest, ATargetThatClosesOnTheKeystroke)
{
    const auto target = Start({.closesOnKey = true});
    EXPECT_EQ(SpeakSelection(), Texts{});
    EXPECT_EQ(OnClipboard(), L"mine");
}

TEST_F(WindowsSelectionTest, AnotherProgramHoldsTheClipboardForAWhile)
{
    const auto target = Start({});
    std::atomic<bool> held{false};
    std::thread holder([&] {
        while (!OpenClipboard(nullptr))
            Sleep(1);
        held = true;
        Sleep(300);
        CloseClipboard();
    });
    while (!held)
        Sleep(1);
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    holder.join();
    EXPECT_EQ(OnClipboard(), L"mine");
}

TEST_F(WindowsSelectionTest, HeldModifiersDoNotMixWithTheKeystrokeAndStayHeld)
{
    for (const WORD shift : {WORD{VK_LSHIFT}, WORD{VK_RSHIFT}}) {
        SCOPED_TRACE(shift);
        const auto target = Start({});
        Hold({VK_LCONTROL, shift, VK_F3});
        EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
        EXPECT_EQ(target->Keys(), std::vector<std::string>{"Ctrl+Insert"});
        EXPECT_TRUE(IsDown(VK_LCONTROL));
        EXPECT_TRUE(IsDown(shift));
        EXPECT_FALSE(IsDown(VK_RCONTROL));
        Release({VK_F3, shift, VK_LCONTROL});
        EXPECT_FALSE(IsDown(VK_CONTROL));
        EXPECT_FALSE(IsDown(VK_SHIFT));
    }
}

TEST_F(WindowsSelectionTest, EveryKindOfTextComesBack)
{
    const auto target = Start({});
    for (const std::wstring& text : {std::wstring(), std::wstring(L"one\r\ntwo\r\n"),
                                     std::wstring(L"smile \U0001F600"), std::wstring(1'000'000, L'x')}) {
        ASSERT_TRUE(ports.clipboard->SetText(text, kPatienceOfACall));
        EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
        EXPECT_TRUE(OnClipboard() == text) << text.size();
    }
}

TEST_F(WindowsSelectionTest, OwnContentIsMarkedToStayOutOfHistories)
{
    for (const wchar_t* name : {L"ExcludeClipboardContentFromMonitorProcessing",
                                L"CanIncludeInClipboardHistory", L"CanUploadToCloudClipboard"})
        EXPECT_TRUE(IsClipboardFormatAvailable(RegisterClipboardFormatW(name)));
}

TEST_F(WindowsSelectionTest, CodesThatAreNoKeyAreNeverDown)
{
    for (const int code : {0, -5, 255, 32767, -32768})
        EXPECT_EQ(ports.keyboard->GetAsyncKeyState(code), 0) << code;
}

TEST_F(WindowsSelectionTest, OwnWindowsBelongToTheOwnThread)
{
    const auto target = Start({});
    EXPECT_NE(ports.windows->GetWindowThreadProcessId(target->Handle()), ports.windows->OwnThread());
    const HWND own = CreateWindowExW(0, L"STATIC", L"own", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(ports.windows->GetWindowThreadProcessId(reinterpret_cast<NativeWindow>(own)),
              ports.windows->OwnThread());
    DestroyWindow(own);
    EXPECT_EQ(ports.windows->GetWindowTitle(target->Handle()), L"target");
}

} // namespace
} // namespace voxtrel::platform
