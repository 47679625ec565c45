#include "tests/agent/stage/stage_test.h"

namespace voxtrel::agent::stage {
namespace {

// The balloon of a character that speaks. Its lines have 20 characters of 5 pixels.
class BalloonTest : public StageTest {
protected:
    BalloonTest()
    {
        ShowGenie();
        Ignore(genie->GetBalloon().SetFontSize(10));
        SetStyle(2, balloon_style::kAutoPace | balloon_style::kAutoHide);
    }

    void SetStyle(std::uint32_t lines, std::uint32_t bits)
    {
        ASSERT_TRUE(genie->GetBalloon().SetStyle(lines << 24 | 20U << 16 | balloon_style::kOn | bits).Ok());
    }
};

TEST_F(BalloonTest, ShowsEachWordAsItIsSpoken)
{
    Ignore(genie->Speak(L"one two three"));
    view->Run(50);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"one"}));
    view->Run(100);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"one two"}));
}

TEST_F(BalloonTest, ShowsTheWholeTextAtOnceWithoutPacing)
{
    SetStyle(2, 0);
    Ignore(genie->Speak(L"one two three"));
    view->Run(0);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"one two three"}));
    EXPECT_EQ(Windows().balloonsShown, 1);
    view->Run(200);
    EXPECT_EQ(Windows().balloonsShown, 1);
}

TEST_F(BalloonTest, WholeTextScrollsToTheWordThatIsSpoken)
{
    SetStyle(2, 0);
    Ignore(genie->Speak(L"aaaaaaaaaaaaaaa bbbbbbbbbbbbbbb ccccccccccccccc ddddddddddddddd"));
    view->Run(150);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"aaaaaaaaaaaaaaa", L"bbbbbbbbbbbbbbb"}));
    view->Run(100);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"bbbbbbbbbbbbbbb", L"ccccccccccccccc"}));
    view->Run(1000);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"ccccccccccccccc", L"ddddddddddddddd"}));
}

TEST_F(BalloonTest, WholeTextThatIsTooLongToLayOutGoesOnWordByWord)
{
    SetStyle(2, 0);
    std::wstring text;
    for (int i = 0; i < 2000; ++i)
        text += L"w" + std::to_wstring(i) + L" ";
    Ignore(genie->Speak(text));
    view->Run(200'050);
    ASSERT_EQ(BalloonLinesShown().size(), 2U);
    EXPECT_TRUE(BalloonLinesShown().back().ends_with(L"w1999")) << "the last word is in sight";
}

TEST_F(BalloonTest, EarlierLinesMoveOutAtTheTop)
{
    Ignore(genie->Speak(L"aaaaaaaaaaaaaaa bbbbbbbbbbbbbbb ccccccccccccccc"));
    view->Run(250);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"bbbbbbbbbbbbbbb", L"ccccccccccccccc"}));
}

TEST_F(BalloonTest, LineBreakOfTheTextBeginsALine)
{
    Ignore(genie->Speak(L"one / two"));
    view->Run(150);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"one", L"two"}));
}

TEST_F(BalloonTest, HasTheSizeOfItsLinesAndCharacters)
{
    Ignore(genie->Speak(L"one"));
    view->Run(50);
    const BalloonMetrics metrics = MetricsAt(1);
    EXPECT_EQ(Windows().balloon->body.width, 20 * 5 + 2 * metrics.paddingX);
    EXPECT_EQ(Windows().balloon->body.height, 2 * 10 + 2 * metrics.paddingY);
}

TEST_F(BalloonTest, SizedToTextItHasItsFullHeightFromTheFirstWord)
{
    SetStyle(2, balloon_style::kAutoPace | balloon_style::kSizeToText);
    Ignore(genie->Speak(L"aaaaaaaaaaaaaaa bbbbbbbbbbbbbbb ccccccccccccccc"));
    view->Run(50);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"aaaaaaaaaaaaaaa"}));
    const int height = Windows().balloon->body.height;
    EXPECT_EQ(height, 3 * 10 + 2 * MetricsAt(1).paddingY);
    view->Run(200);
    EXPECT_EQ(BalloonLinesShown().size(), 3U);
    EXPECT_EQ(Windows().balloon->body.height, height);
}

TEST_F(BalloonTest, SizedToALongTextItStaysOnTheScreenAndScrolls)
{
    SetStyle(2, balloon_style::kAutoPace | balloon_style::kSizeToText);
    std::wstring text;
    for (int i = 0; i < 300; ++i)
        text += L"aaaaaaaaaaaaaaa ";
    Ignore(genie->Speak(text));
    view->Run(29'950);
    const Rect body = Windows().balloon->body;
    EXPECT_GE(body.y, 0);
    EXPECT_LE(body.Bottom(), 760);
    EXPECT_EQ(Windows().balloon->lines.size(),
              static_cast<std::size_t>((body.height - 2 * MetricsAt(1).paddingY) / 10));
}

TEST_F(BalloonTest, SizedToALongTextItStandsAboveOrBelowAtEveryCornerAndCoversNothingOfTheCharacter)
{
    SetStyle(2, balloon_style::kSizeToText);
    std::wstring text;
    for (int i = 0; i < 300; ++i)
        text += L"aaaaaaaaaaaaaaa ";
    Ignore(genie->Speak(text));
    view->Run(50);
    const int height = Windows().balloon->body.height;
    for (const Point corner : {Point{0, 0}, {992, 0}, {0, 752}, {992, 752}, {500, 376}}) {
        Ignore(genie->SetLeft(corner.x));
        Ignore(genie->SetTop(corner.y));
        ASSERT_TRUE(Windows().balloon) << corner.x << ", " << corner.y;
        const Rect body = Windows().balloon->body;
        EXPECT_TRUE(body.Bottom() <= corner.y || body.y >= corner.y + 8) << corner.x << ", " << corner.y;
        EXPECT_TRUE(body.x >= 0 && body.Right() <= 1000 && body.y >= 0 && body.Bottom() <= 760);
        EXPECT_EQ(body.height, height);
    }
}

TEST_F(BalloonTest, HidesItselfTwoSecondsAfterTheLastWord)
{
    Ignore(genie->Speak(L"one"));
    view->Run(2090);
    EXPECT_TRUE(Windows().balloon);
    view->Run(60);
    EXPECT_FALSE(Windows().balloon);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"balloon shown", L"done Speak", L"balloon hidden"}));
}

TEST_F(BalloonTest, StaysWithoutAutoHideUntilTheNextSpeak)
{
    SetStyle(2, balloon_style::kAutoPace);
    Ignore(genie->Speak(L"one"));
    view->Run(60'000);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"one"}));
    Ignore(genie->Speak(L"two"));
    view->Run(50);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"two"}));
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"balloon shown", L"done Speak", L"idle", L"start Speak",
                                    L"idle over", L"balloon hidden", L"balloon shown"}));
}

TEST_F(BalloonTest, GoesWithTheCharacter)
{
    SetStyle(2, balloon_style::kAutoPace);
    Ignore(genie->Speak(L"one"));
    Ignore(genie->Hide());
    view->Run(1000);
    EXPECT_FALSE(Windows().balloon);
}

TEST_F(BalloonTest, IsNotShownWhenThereIsNothingToShow)
{
    Ignore(genie->Speak(L"#1 ~one ~two"));
    view->Run(5000);
    EXPECT_EQ(Windows().balloonsShown, 0);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"bookmark 1", L"done Speak"}));
    SetStyle(2, 0);
    Ignore(genie->Speak(L"~one ~two"));
    view->Run(5000);
    EXPECT_EQ(Windows().balloonsShown, 0);
}

TEST_F(BalloonTest, IsNotShownWhenItIsSwitchedOff)
{
    ASSERT_TRUE(genie->GetBalloon().SetStyle(2U << 24 | 20U << 16 | balloon_style::kAutoPace).Ok());
    Ignore(genie->Speak(L"one two"));
    view->Run(5000);
    EXPECT_EQ(Windows().balloonsShown, 0);
}

TEST_F(BalloonTest, FollowsTheCharacter)
{
    Ignore(genie->Speak(L"one two three four"));
    view->Run(50);
    const Rect before = Windows().balloon->body;
    Ignore(genie->SetLeft(450));
    EXPECT_EQ(Windows().balloon->body.x, before.x + 50);
    Ignore(genie->SetTop(420));
    EXPECT_EQ(Windows().balloon->body.y, before.y + 20);
}

TEST_F(BalloonTest, GoesWhileTheCharacterIsOffTheScreenAndComesBackWithIt)
{
    Ignore(genie->Speak(L"one two three four"));
    view->Run(50);
    Ignore(genie->SetLeft(1000));
    EXPECT_FALSE(Windows().balloon);
    Ignore(genie->SetLeft(900));
    EXPECT_TRUE(Windows().balloon);
}

TEST_F(BalloonTest, KeepsToTheMonitorThatShowsTheCharacter)
{
    view->secondMonitor = Rect{1000, 200, 800, 600};
    SetStyle(2, balloon_style::kAutoPace);
    Ignore(genie->Speak(L"one two three"));
    view->Run(50);
    for (const int left : {1000, 1010, 1790}) {
        Ignore(genie->SetLeft(left));
        for (const int top : {200, 500, 790}) {
            Ignore(genie->SetTop(top));
            ASSERT_TRUE(Windows().balloon);
            const Rect body = Windows().balloon->body;
            EXPECT_TRUE(body.x >= 1000 && body.Right() <= 1800 && body.y >= 200 && body.Bottom() <= 800)
                << left << ", " << top;
        }
    }
    Ignore(genie->SetLeft(985));
    EXPECT_LE(Windows().balloon->body.Right(), 1000);
}

TEST_F(BalloonTest, LeftoverThatLeavesTheScreenIsToldWithoutDelay)
{
    SetStyle(2, balloon_style::kAutoPace);
    Ignore(genie->Speak(L"one"));
    view->Run(1000);
    events.Take();
    Ignore(genie->SetLeft(1000));
    view->Run(0);
    EXPECT_EQ(events.Take(), (Lines{L"balloon hidden"}));
}

TEST_F(BalloonTest, StandsAboveTheVisiblePartOfTheFrame)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.animations[0].frames[0].images[0].y = 3;
    Rebuild(file);
    ShowGenie();
    Ignore(genie->Speak(L"one"));
    view->Run(50);
    const BalloonMetrics metrics = MetricsAt(1);
    EXPECT_EQ(Windows().balloon->body.Bottom() + metrics.wedgeLength + metrics.gap, 403);
}

TEST_F(BalloonTest, ClickHidesItEvenWhileSpeaking)
{
    Ignore(genie->Speak(L"one two three four"));
    view->Run(50);
    Windows().input->BalloonPress();
    EXPECT_FALSE(Windows().balloon);
    view->Run(200);
    EXPECT_FALSE(Windows().balloon);
    EXPECT_TRUE(engine->Speaking());
}

TEST_F(BalloonTest, LooksAsTheFileSays)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.balloon->background = {1, 2, 3};
    file.balloon->border = {4, 5, 6};
    file.balloon->text = {7, 8, 9};
    file.balloon->italic = true;
    Rebuild(file);
    ShowGenie();
    Ignore(genie->GetBalloon().SetFontName(L"Serif"));
    Ignore(genie->Speak(L"one"));
    view->Run(50);
    EXPECT_EQ(Windows().balloon->colors, (BalloonColors{{7, 8, 9}, {1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(Windows().balloon->font, (FontSpec{L"Serif", 10, false, true}));
}

TEST_F(BalloonTest, LargestFontStaysInsideTheWorkArea)
{
    ASSERT_TRUE(genie->GetBalloon().SetFontSize(2160).Ok());
    Ignore(genie->Speak(L"one two"));
    view->Run(150);
    const Rect body = Windows().balloon->body;
    EXPECT_GE(body.x, 0);
    EXPECT_GE(body.y, 0);
    EXPECT_LE(body.Right(), 1000);
    EXPECT_LE(body.Bottom(), 760);
}

} // namespace
} // namespace voxtrel::agent::stage
