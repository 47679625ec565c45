#include "tests/agent/stage/stage_test.h"

namespace voxtrel::agent::stage {
namespace {

using StopAll = StageTest;

TEST_F(StopAll, OnARestingCharacterDoesNothing)
{
    ShowGenie();
    EXPECT_TRUE(genie->StopAll().Ok());
    view->Run(1000);
    EXPECT_TRUE(events.Take().empty());
    EXPECT_TRUE(frames.empty());
}

TEST_F(StopAll, SilencesInsideTheCallAndClosesTheMouth)
{
    ShowGenie();
    Ignore(genie->Speak(L"one two three"));
    view->Run(150);
    EXPECT_EQ(ShownMouth(), 3);
    Ignore(genie->StopAll());
    EXPECT_FALSE(engine->Speaking());
    EXPECT_EQ(engine->stopped, 1);
    EXPECT_EQ(ShownMouth(), 0);
}

TEST_F(StopAll, EmptiesTheQueueAndTellsWhatBecameOfIt)
{
    ShowGenie();
    Ignore(genie->Speak(L"one two three"));
    Ignore(genie->Play(L"wave"));
    Ignore(genie->Hide());
    view->Run(50);
    Ignore(genie->StopAll());
    view->Run(5000);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"balloon shown", L"interrupted Speak",
                                    L"removed Play wave", L"removed Hide", L"balloon hidden"}));
    EXPECT_TRUE(genie->Visible());
}

TEST_F(StopAll, NoBookmarkArrivesLater)
{
    ShowGenie();
    Ignore(genie->Speak(L"#1 one #2 two #3"));
    view->Run(50);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"bookmark 1", L"balloon shown"}));
    Ignore(genie->StopAll());
    view->Run(5000);
    for (const std::wstring& line : events.Take())
        EXPECT_EQ(line.find(L"bookmark"), std::wstring::npos) << "after the stop";
}

TEST_F(StopAll, WithdrawsABookmarkThatIsOnItsWay)
{
    ShowGenie();
    events.onEvent = [this](const std::wstring& line) {
        if (line == L"bookmark 1")
            Ignore(genie->StopAll());
    };
    Ignore(genie->Speak(L"#1 #2 #3 one"));
    view->Run(5000);
    Lines bookmarks;
    for (const std::wstring& line : events.Take()) {
        if (line.starts_with(L"bookmark"))
            bookmarks.push_back(line);
    }
    EXPECT_EQ(bookmarks, (Lines{L"bookmark 1"}));
}

TEST_F(StopAll, KeepsTheBookmarksOfWhatIsSpokenAfterwards)
{
    ShowGenie();
    Ignore(genie->Speak(L"#1 one"));
    view->Run(0);
    Ignore(genie->StopAll());
    Ignore(genie->Speak(L"#2 two"));
    view->Run(100);
    const Lines told = events.Take();
    EXPECT_EQ(std::count(told.begin(), told.end(), L"bookmark 2"), 1);
}

TEST_F(StopAll, InterruptedShowEndsVisibleInItsFinalPose)
{
    Ignore(genie->Show());
    view->Run(50);
    EXPECT_EQ(ShownImage(), 1);
    Ignore(genie->StopAll());
    EXPECT_TRUE(genie->Visible());
    EXPECT_EQ(ShownImage(), 0);
    view->Run(1000);
    EXPECT_TRUE(genie->Visible());
    EXPECT_EQ(events.Take(), (Lines{L"start Show", L"interrupted Show"}));
}

TEST_F(StopAll, InterruptedHideEndsHiddenAtOnce)
{
    ShowGenie();
    Ignore(genie->Hide());
    view->Run(50);
    Ignore(genie->StopAll());
    EXPECT_FALSE(genie->Visible());
    EXPECT_EQ(Windows().frame, nullptr);
    view->Run(1000);
    EXPECT_EQ(events.Take(), (Lines{L"start Hide", L"interrupted Hide"}));
}

// A text that was read at once at start-up left the character invisible, and so silent, for good.
TEST_F(StopAll, BeforeTheFirstTickTheCharacterStillAppears)
{
    Ignore(genie->Show());
    Ignore(genie->StopAll());
    EXPECT_TRUE(genie->Visible());
    view->Run(1000);
    EXPECT_TRUE(genie->Visible());
    EXPECT_EQ(events.Take(), (Lines{L"start Show", L"interrupted Show"}));
}

TEST_F(StopAll, LeavesTheRunningAnimationByItsExitFrames)
{
    ShowGenie();
    Ignore(genie->Play(L"wave"));
    view->Run(150);
    EXPECT_EQ(frames, (Lines{L"Wave 0", L"Wave 1"}));
    Ignore(genie->StopAll());
    view->Run(1000);
    EXPECT_EQ(frames, (Lines{L"Wave 0", L"Wave 1", L"Wave 0"}));
}

TEST_F(StopAll, BalloonThatHidesItselfStaysForItsDelay)
{
    ShowGenie();
    Ignore(genie->Speak(L"one two three"));
    view->Run(150);
    Ignore(genie->StopAll());
    view->Run(1990);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"one two"}));
    view->Run(20);
    EXPECT_FALSE(Windows().balloon);
}

TEST_F(StopAll, BalloonThatStaysGoesAtOnce)
{
    ShowGenie();
    Balloon& balloon = genie->GetBalloon();
    Ignore(balloon.SetStyle(balloon.Style() & ~balloon_style::kAutoHide));
    Ignore(genie->Speak(L"one two three"));
    view->Run(150);
    Ignore(genie->StopAll());
    EXPECT_FALSE(Windows().balloon);
}

TEST_F(StopAll, SpeakDirectlyAfterwardsStartsInTheSameTick)
{
    ShowGenie();
    Ignore(genie->Speak(L"one two three"));
    view->Run(150);
    Ignore(genie->StopAll());
    Ignore(genie->Speak(L"again"));
    view->Run(0);
    EXPECT_EQ(engine->spoken.back(), L"again");
    EXPECT_TRUE(engine->Speaking());
}

} // namespace
} // namespace voxtrel::agent::stage
