#include "tests/agent/stage/stage_test.h"

namespace voxtrel::agent::stage {
namespace {

class PointerTest : public StageTest {
protected:
    PointerTest() { ShowGenie(); }

    PointerInput& Pointer() { return *Windows().input; }
    Lines Told()
    {
        view->Run(0);
        return events.Take();
    }
};

TEST_F(PointerTest, PressAndReleaseIsAClick)
{
    Pointer().Press(1, 3, {404, 405});
    EXPECT_TRUE(Told().empty());
    Pointer().Release(1, 3, {404, 405});
    EXPECT_EQ(Told(), (Lines{L"click genie 1 3 404,405"}));
}

TEST_F(PointerTest, ButtonsHaveTheirNumbers)
{
    for (const int button : {2, 4}) {
        Pointer().Press(button, 0, {404, 405});
        Pointer().Release(button, 0, {404, 405});
    }
    EXPECT_EQ(Told(), (Lines{L"click genie 2 0 404,405", L"click genie 4 0 404,405"}));
}

TEST_F(PointerTest, DoubleClickFollowsItsClick)
{
    Pointer().Press(1, 0, {404, 405});
    Pointer().Release(1, 0, {404, 405});
    Pointer().DoublePress(1, 0, {404, 405});
    Pointer().Release(1, 0, {404, 405});
    EXPECT_EQ(Told(), (Lines{L"click genie 1 0 404,405", L"dblclick genie 1 0 404,405"}));
}

TEST_F(PointerTest, DragMovesTheCharacterAndIsNoClick)
{
    Pointer().Press(1, 0, {404, 405});
    Pointer().Move({440, 455});
    EXPECT_EQ(genie->Left(), 436);
    EXPECT_EQ(genie->Top(), 450);
    EXPECT_EQ(Windows().at, (Point{436, 450}));
    Pointer().Move({340, 355});
    Pointer().Release(1, 0, {341, 356});
    EXPECT_EQ(genie->Left(), 337);
    EXPECT_EQ(genie->Top(), 351);
    EXPECT_EQ(Told(), (Lines{L"dragstart genie 1 0 404,405", L"dragcomplete genie 1 0 341,356"}));
}

TEST_F(PointerTest, DragOfWhichOnlyTheReleaseIsHeardMovesTheCharacterToo)
{
    Pointer().Press(1, 0, {404, 405});
    Pointer().Release(1, 0, {504, 605});
    EXPECT_EQ(genie->Left(), 500);
    EXPECT_EQ(genie->Top(), 600);
    EXPECT_EQ(Told(), (Lines{L"dragstart genie 1 0 404,405", L"dragcomplete genie 1 0 504,605"}));
}

TEST_F(PointerTest, SecondPressOfADoubleClickCanBecomeADrag)
{
    Pointer().Press(1, 0, {404, 405});
    Pointer().Release(1, 0, {404, 405});
    Pointer().DoublePress(1, 0, {404, 405});
    Told();
    Pointer().Move({440, 455});
    Pointer().Release(1, 0, {440, 455});
    EXPECT_EQ(genie->Left(), 436);
    EXPECT_EQ(Told(), (Lines{L"dragstart genie 1 0 404,405", L"dragcomplete genie 1 0 440,455"}));
}

TEST_F(PointerTest, UnsteadyHandStillClicks)
{
    Pointer().Press(1, 0, {404, 405});
    Pointer().Move({408, 401});
    Pointer().Release(1, 0, {408, 401});
    EXPECT_EQ(genie->Left(), 400);
    EXPECT_EQ(Told(), (Lines{L"click genie 1 0 408,401"}));
}

TEST_F(PointerTest, OtherButtonsDoNotDrag)
{
    Pointer().Press(2, 0, {404, 405});
    Pointer().Move({440, 455});
    EXPECT_EQ(genie->Left(), 400);
}

TEST_F(PointerTest, PointerWithoutAPressMovesNothing)
{
    Pointer().Move({440, 455});
    Pointer().Release(1, 0, {440, 455});
    EXPECT_TRUE(Told().empty());
}

TEST_F(PointerTest, DragThatIsTakenAwayEnds)
{
    Pointer().Press(1, 0, {404, 405});
    Pointer().Move({440, 455});
    Pointer().PressLost();
    Pointer().Move({100, 100});
    EXPECT_EQ(genie->Left(), 436);
    EXPECT_EQ(Told(), (Lines{L"dragstart genie 1 0 404,405", L"dragcomplete genie 1 0 440,455"}));
}

TEST_F(PointerTest, ClickHidesALeftoverBalloon)
{
    Balloon& balloon = genie->GetBalloon();
    Ignore(balloon.SetStyle(balloon.Style() & ~balloon_style::kAutoHide));
    Ignore(genie->Speak(L"one"));
    view->Run(1000);
    ASSERT_TRUE(Windows().balloon);
    Pointer().Press(1, 0, {404, 405});
    Pointer().Release(1, 0, {404, 405});
    EXPECT_FALSE(Windows().balloon);
}

TEST_F(PointerTest, LeftoverBalloonGoesBeforeTheCharacterIsDraggedAway)
{
    Balloon& balloon = genie->GetBalloon();
    Ignore(balloon.SetStyle(balloon.Style() & ~balloon_style::kAutoHide));
    Ignore(genie->Speak(L"one"));
    view->Run(1000);
    ASSERT_TRUE(Windows().balloon);
    const int shown = Windows().balloonsShown;
    Pointer().Press(1, 0, {404, 405});
    Pointer().Move({440, 455});
    EXPECT_FALSE(Windows().balloon);
    EXPECT_EQ(Windows().balloonsShown, shown);
}

TEST_F(PointerTest, ClickLeavesTheBalloonOfASpeakingCharacter)
{
    Ignore(genie->Speak(L"one two three"));
    view->Run(50);
    Pointer().Press(1, 0, {404, 405});
    Pointer().Release(1, 0, {404, 405});
    EXPECT_TRUE(Windows().balloon);
}

TEST_F(PointerTest, BalloonOfASpeakingCharacterFollowsTheDrag)
{
    Ignore(genie->Speak(L"one two three"));
    view->Run(50);
    const int before = Windows().balloon->body.x;
    Pointer().Press(1, 0, {404, 405});
    Pointer().Move({454, 405});
    EXPECT_EQ(Windows().balloon->body.x, before + 50);
}

} // namespace
} // namespace voxtrel::agent::stage
