#include "ovaccserver/pointer_watch.h"

#include <gtest/gtest.h>

namespace voxtrel::ovaccserver {
namespace {

using namespace std::chrono_literals;

class PointerWatchTest : public testing::Test {
protected:
    // The pointer at this place for so long; how often it was looked.
    int Stay(platform::ScreenPoint point, std::chrono::milliseconds time, bool answered = true,
             bool pressed = false)
    {
        int looks = 0;
        for (const auto end = now + time; now < end; now += 10ms) {
            if (!watch.WantsLook({point, pressed}, now))
                continue;
            ++looks;
            watch.Looked(answered, now);
        }
        return looks;
    }

    PointerWatch::TimePoint now{1000s};
    PointerWatch watch;
};

TEST_F(PointerWatchTest, LooksOnceThePointerRests)
{
    EXPECT_EQ(Stay({100, 100}, 40ms), 0);
    EXPECT_EQ(Stay({100, 100}, 100ms), 1);
}

TEST_F(PointerWatchTest, NeverLooksWhileThePointerMoves)
{
    for (int x = 0; x < 1000; x += 10)
        EXPECT_EQ(Stay({x, -x}, 30ms), 0);
}

TEST_F(PointerWatchTest, TakesATremblingHandForRest)
{
    int looks = 0;
    for (int i = 0; i < 10; ++i)
        looks += Stay({100 + i % 3, 100 - i % 2}, 20ms);
    EXPECT_EQ(looks, 1);
}

TEST_F(PointerWatchTest, LooksAgainWhileThePointerRestsMoreAndMoreSeldom)
{
    EXPECT_EQ(Stay({5, 5}, 280ms), 1);
    EXPECT_EQ(Stay({5, 5}, 20ms), 1);   // after 250 ms
    EXPECT_EQ(Stay({5, 5}, 3500ms), 3); // 500, 1000 and 2000 ms
    EXPECT_EQ(Stay({5, 5}, 30s), 10);   // 3 s each
}

TEST_F(PointerWatchTest, LooksAgainSoonAfterAClick)
{
    Stay({5, 5}, 20s);
    EXPECT_EQ(Stay({5, 5}, 500ms, true, true), 0);
    EXPECT_EQ(Stay({5, 5}, 50ms), 1);
}

TEST_F(PointerWatchTest, AsksAProgramThatDoesNotAnswerMoreAndMoreSeldom)
{
    // After 1, 2, 4, 8, 16 and then 30 seconds each.
    EXPECT_EQ(Stay({5, 5}, 60s, false), 6);
    EXPECT_EQ(Stay({5, 5}, 60s, false), 2);
    EXPECT_EQ(Stay({50, 5}, 100ms), 1) << "another place is asked at once";
}

TEST_F(PointerWatchTest, AsksAProgramThatAnswersAgainAsOftenAsAnyOther)
{
    Stay({5, 5}, 59s, false);
    Stay({5, 5}, 10s);
    EXPECT_EQ(Stay({5, 5}, 30s), 10);
}

TEST_F(PointerWatchTest, LooksAgainWhenItIsStartedAgain)
{
    EXPECT_EQ(Stay({5, 5}, 200ms), 1);
    watch.Restart();
    EXPECT_EQ(Stay({5, 5}, 200ms), 1);
}

} // namespace
} // namespace voxtrel::ovaccserver
