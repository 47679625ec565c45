#include "desktop_fixture.h"

#include <X11/keysym.h>

namespace voxtrel::platform {
namespace {

constexpr int kShift = 16;
constexpr int kCtrl = 17;
constexpr int kAlt = 18;
constexpr int kF3 = 114;

class X11KeysTest : public X11Test {
protected:
    ~X11KeysTest() override
    {
        Fingers({"keyup", "Control_L", "Control_R", "Shift_L", "Alt_L", "F3", "ISO_Level3_Shift"});
    }

    // The keys that the target has got since the mark, without modifier keys.
    static std::string KeysBehind(const std::string& output, std::size_t mark)
    {
        std::string keys;
        std::size_t begin = mark;
        while (begin < output.size()) {
            const std::size_t end = output.find('\n', begin);
            const std::string line = output.substr(begin, end - begin);
            if (line.find("Insert") != std::string::npos || line.find(" c ") != std::string::npos)
                keys += line + "\n";
            begin = end == std::string::npos ? output.size() : end + 1;
        }
        return keys;
    }
};

TEST_F(X11KeysTest, TellsWhichKeysAreDown)
{
    EXPECT_FALSE(IsDown(kCtrl));
    Fingers({"keydown", "Control_R", "keydown", "F3"});
    EXPECT_TRUE(IsDown(kCtrl));
    EXPECT_TRUE(IsDown(kF3));
    EXPECT_FALSE(IsDown(kF3 + 1));
    EXPECT_FALSE(IsDown(kShift));
    Fingers({"keyup", "F3"});
    EXPECT_FALSE(IsDown(kF3));
    EXPECT_TRUE(IsDown(kCtrl));
}

TEST_F(X11KeysTest, CodesThatAreNoKeyAreNeverDown)
{
    for (const int code : {0, 1, -5, 255, 32767, -32768})
        EXPECT_EQ(keys.GetAsyncKeyState(code), 0) << code;
}

TEST_F(X11KeysTest, TypesTheKeystrokeAndLeavesNothingDown)
{
    NativeWindow window = 0;
    const auto target = StartTarget({"--copy", "none"}, window);
    const std::size_t mark = target->Output().size();
    ASSERT_TRUE(keystrokes.SendKeys(kCtrlInsert, window));
    ASSERT_TRUE(keystrokes.SendKeys(kCtrlC, window));
    const std::string expected = "press Insert 4\nrelease Insert 4\npress c 4\nrelease c 4\n";
    EXPECT_TRUE(Until([&] { return KeysBehind(target->Output(), mark) == expected; })) << target->Output();
    EXPECT_FALSE(IsDown(kCtrl));
}

TEST_F(X11KeysTest, CtrlAndF3HeldDownDoNotMixWithTheKeystroke)
{
    NativeWindow window = 0;
    const auto target = StartTarget({"--copy", "none"}, window);
    Fingers({"keydown", "Control_L", "keydown", "F3"});
    const std::size_t mark = target->Output().size();
    ASSERT_TRUE(keystrokes.SendKeys(kCtrlInsert, window));
    EXPECT_TRUE(Until([&] {
        return KeysBehind(target->Output(), mark) == "press Insert 4\nrelease Insert 4\n";
    })) << target->Output();
    EXPECT_TRUE(IsDown(kCtrl)) << "the user still holds it";
    EXPECT_TRUE(IsDown(kF3));
    Fingers({"keyup", "Control_L", "keyup", "F3"});
    EXPECT_FALSE(IsDown(kCtrl));
}

TEST_F(X11KeysTest, OtherModifiersAreLetGoAndAreAsBeforeAfterwards)
{
    NativeWindow window = 0;
    const auto target = StartTarget({"--copy", "none"}, window);
    for (const char* modifier : {"Shift_L", "Alt_L", "ISO_Level3_Shift"}) {
        SCOPED_TRACE(modifier);
        Fingers({"keydown", "Control_L", "keydown", modifier, "keydown", "F3"});
        const std::size_t mark = target->Output().size();
        ASSERT_TRUE(keystrokes.SendKeys(kCtrlC, window));
        EXPECT_TRUE(Until([&] { return KeysBehind(target->Output(), mark) == "press c 4\nrelease c 4\n"; }))
            << target->Output();
        EXPECT_TRUE(IsDown(kCtrl));
        EXPECT_EQ(IsDown(kShift), std::string(modifier) == "Shift_L");
        EXPECT_EQ(IsDown(kAlt), std::string(modifier) == "Alt_L");
        Fingers({"keyup", "F3", "keyup", modifier, "keyup", "Control_L"});
        EXPECT_FALSE(IsDown(kShift));
        EXPECT_FALSE(IsDown(kAlt));
        EXPECT_FALSE(IsDown(kCtrl));
        // Whoever types next finds the modifier working.
        Fingers({"key", std::string(modifier) + "+a"});
    }
}

TEST_F(X11KeysTest, AModifierReleasedAtTheVeryMomentDoesNotStick)
{
    NativeWindow window = 0;
    const auto target = StartTarget({"--copy", "none"}, window);
    Fingers({"keydown", "Control_L", "keydown", "Shift_L"});
    keys.onLooked = [this] { Fingers({"keyup", "Shift_L"}); };
    ASSERT_TRUE(keystrokes.SendKeys(kCtrlInsert, window));
    keys.onLooked = nullptr;
    EXPECT_FALSE(IsDown(kShift));
    EXPECT_TRUE(IsDown(kCtrl));
}

TEST_F(X11KeysTest, AModifierPressedAtTheVeryMomentStaysDown)
{
    NativeWindow window = 0;
    const auto target = StartTarget({"--copy", "none"}, window);
    keys.onLooked = [this] { Fingers({"keydown", "Shift_L"}); };
    ASSERT_TRUE(keystrokes.SendKeys(kCtrlInsert, window));
    keys.onLooked = nullptr;
    EXPECT_TRUE(IsDown(kShift));
    Fingers({"keyup", "Shift_L"});
    EXPECT_FALSE(IsDown(kShift));
}

TEST_F(X11KeysTest, BothCtrlKeysHeldDown)
{
    NativeWindow window = 0;
    const auto target = StartTarget({"--copy", "none"}, window);
    Fingers({"keydown", "Control_L", "keydown", "Control_R"});
    const std::size_t mark = target->Output().size();
    ASSERT_TRUE(keystrokes.SendKeys(kCtrlInsert, window));
    EXPECT_TRUE(Until([&] {
        return KeysBehind(target->Output(), mark) == "press Insert 4\nrelease Insert 4\n";
    })) << target->Output();
    EXPECT_TRUE(IsDown(kCtrl));
    Fingers({"keyup", "Control_L", "keyup", "Control_R"});
    EXPECT_FALSE(IsDown(kCtrl));
}

TEST_F(X11KeysTest, AWindowBehindGetsNoKey)
{
    NativeWindow behind = 0;
    NativeWindow front = 0;
    const auto first = StartTarget({}, behind);
    const auto second = StartTarget({}, front);
    const std::size_t mark = second->Output().size();
    EXPECT_FALSE(keystrokes.SendKeys(kCtrlInsert, behind));
    EXPECT_TRUE(keystrokes.SendKeys(kCtrlC, front));
    EXPECT_TRUE(
        Until([&] { return KeysBehind(second->Output(), mark).find("release c") != std::string::npos; }));
    EXPECT_EQ(KeysBehind(first->Output(), 0), "");
    EXPECT_EQ(KeysBehind(second->Output(), mark).find("Insert"), std::string::npos);
}

TEST_F(X11KeysTest, ATerminalGetsNoKey)
{
    NativeWindow window = 0;
    const auto target = StartTarget({"--class", "XTerm"}, window);
    EXPECT_FALSE(keystrokes.SendKeys(kCtrlInsert, window));
    EXPECT_FALSE(keystrokes.SendKeys(kCtrlC, window));
}

TEST_F(X11KeysTest, UnknownNotationTypesNothing)
{
    NativeWindow window = 0;
    const auto target = StartTarget({}, window);
    EXPECT_FALSE(keystrokes.SendKeys(L"%{F4}", window));
    EXPECT_FALSE(keystrokes.SendKeys(L"", window));
}

} // namespace
} // namespace voxtrel::platform
