// Selection requests made to real programs on a real X server.

#include "desktop_fixture.h"

#include "hotkeys/selection.h"

#include <csignal>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

class X11SelectionTest : public X11Test {
protected:
    X11SelectionTest() { clipboard.SetText(L"mine", 1000ms); }

    hotkeys::Selection MakeSelection()
    {
        return hotkeys::Selection({windows, clipboard, keystrokes, [this] { clipboard.ServeRequests(); },
                                   [this](std::wstring text) { heard.push_back(std::move(text)); },
                                   [this](std::wstring text) { heard.push_back(std::move(text)); }, [] {},
                                   [](NativeWindow, std::wstring_view) {}});
    }

    // What hot key 1 hears of the program that is in front.
    std::vector<std::wstring> SpeakSelection()
    {
        heard.clear();
        selection.UpdateTargetWindow();
        begin = std::chrono::steady_clock::now();
        selection.RunHotKey(1);
        took = std::chrono::steady_clock::now() - begin;
        return heard;
    }

    std::string Pasted() { return Ask({"xclip", "-o", "-selection", "clipboard", "-t", "UTF8_STRING"}); }

    using Texts = std::vector<std::wstring>;

    Texts heard;
    std::chrono::steady_clock::time_point begin;
    std::chrono::steady_clock::duration took{};
    hotkeys::Selection selection = MakeSelection();
    NativeWindow window = 0;
};

TEST_F(X11SelectionTest, SpeaksWhatIsCopiedOnCtrlInsert)
{
    const auto target = StartTarget({"--copy", "insert"}, window);
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    EXPECT_EQ(Pasted(), "mine");
    EXPECT_EQ(selection.TargetWindow(), window);
}

TEST_F(X11SelectionTest, SpeaksWhatIsCopiedOnCtrlCOnly)
{
    const auto target = StartTarget({"--copy", "c"}, window);
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, SpeaksThePrimarySelectionOfAProgramThatCopiesOnNoKey)
{
    const auto target = StartTarget({"--copy", "none", "--primary"}, window);
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, NeverSpeaksThePrimarySelectionOfAnotherProgram)
{
    NativeWindow other = 0;
    const auto owner = StartTarget({"--copy", "none", "--primary", "--text", "private"}, other);
    const auto target = StartTarget({"--copy", "none"}, window);
    EXPECT_EQ(SpeakSelection(), Texts{});
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, ATerminalsSelectionIsSpokenWithoutAKey)
{
    const auto target = StartTarget({"--copy", "none", "--primary", "--class", "XTerm"}, window);
    const std::size_t mark = target->Output().size();
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    EXPECT_EQ(target->Output().size(), mark) << target->Output();
}

TEST_F(X11SelectionTest, LongTextsComeThroughAndBack)
{
    const std::wstring mine(1'000'000, L'm');
    ASSERT_TRUE(clipboard.SetText(mine, 1000ms));
    const auto target = StartTarget({"--size", "1000000"}, window);
    ASSERT_EQ(SpeakSelection().size(), 1u);
    EXPECT_EQ(heard.front().size(), 1'000'000u);
    EXPECT_EQ(Pasted().size(), mine.size());
}

TEST_F(X11SelectionTest, AHungTargetIsLeftAloneAndDoesNotCopyWhenItWakes)
{
    const auto target = StartTarget({}, window);
    target->Signal(SIGSTOP);
    EXPECT_EQ(SpeakSelection(), Texts{});
    EXPECT_LT(took, 4s);
    EXPECT_EQ(Pasted(), "mine");
    target->Signal(SIGCONT);
    ASSERT_TRUE(Until([&] { return !windows.IsHungAppWindow(window); }));
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, BothWaysOfAnsweringCountAndSilenceDoesNotHarm)
{
    for (const char* way : {"--ping", "--other-answer", "--no-ping"}) {
        SCOPED_TRACE(way);
        const auto target = StartTarget({way}, window);
        EXPECT_FALSE(windows.IsHungAppWindow(window));
        EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    }
}

TEST_F(X11SelectionTest, ATargetThatHangsOnTheKeystroke)
{
    const auto target = StartTarget({"--hang-on-key"}, window);
    EXPECT_EQ(SpeakSelection(), Texts{});
    EXPECT_LT(took, 6s);
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, ATargetThatClosesOnTheKeystroke)
{
    const auto target = StartTarget({"--close-on-key"}, window);
    EXPECT_EQ(SpeakSelection(), Texts{});
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, ATargetThatIsGoneAlready)
{
    auto target = StartTarget({}, window);
    selection.UpdateTargetWindow();
    target.reset();
    selection.SpeakSelected();
    EXPECT_EQ(heard, Texts{L""});
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, ToolbarRequestBringsTheTargetBackToTheFront)
{
    NativeWindow other = 0;
    const auto target = StartTarget({"--text", "wanted"}, window);
    selection.UpdateTargetWindow();
    const auto inFront = StartTarget({"--text", "unwanted"}, other);
    selection.SpeakSelected();
    EXPECT_EQ(heard, Texts{L"wanted"});
    EXPECT_TRUE(windows.HasFocus(window));
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, WorksWhileTheHotKeyIsHeldDown)
{
    const auto target = StartTarget({"--copy", "c"}, window);
    Fingers({"keydown", "Control_L", "keydown", "F3"});
    EXPECT_EQ(SpeakSelection(), Texts{L"Hello."});
    EXPECT_TRUE(IsDown(17));
    Fingers({"keyup", "F3", "keyup", "Control_L"});
    EXPECT_FALSE(IsDown(17));
    EXPECT_EQ(Pasted(), "mine");
}

TEST_F(X11SelectionTest, OwnProcessIsToldByItsNumber)
{
    const auto target = StartTarget({}, window);
    EXPECT_NE(windows.GetWindowThreadProcessId(window), 0u);
    EXPECT_NE(windows.GetWindowThreadProcessId(window), windows.OwnThread());
    EXPECT_EQ(windows.GetWindowTitle(window), L"target");
    EXPECT_EQ(windows.GetWindowThreadProcessId(0x7fffff), 0u);
    EXPECT_EQ(windows.GetWindowTitle(0x7fffff), L"");
}

} // namespace
} // namespace voxtrel::platform
