#include "agent/stage/animator.h"

#include "agent/stage/names.h"
#include "tests/agent/stage/test_character.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace voxtrel::agent::stage {
namespace {

using Lines = std::vector<std::wstring>;

class AnimatorTest : public ::testing::Test {
protected:
    acs::Animation& Named(std::wstring_view name)
    {
        return *const_cast<acs::Animation*>(FindAnimation(file, name));
    }

    void Run(int milliseconds)
    {
        const Time end = now + Time{milliseconds};
        while (animator.NextChange() <= end)
            animator.Advance(now = animator.NextChange());
        animator.Advance(now = end);
    }

    acs::CharacterFile file = MakeTestCharacter();
    Lines frames;
    int draw = 0;
    Time now{5000};
    Animator animator{file, [this](int) { return draw; },
                      [this](const TraceEvent& event) {
                          if (event.event == "frame")
                              frames.push_back(std::wstring(event.text) + L" " +
                                               std::to_wstring(event.number));
                      }};
};

TEST_F(AnimatorTest, HoldsEachFrameForItsDuration)
{
    Named(L"Show").frames[1].duration = 25;
    animator.Play(Named(L"Show"), now);
    EXPECT_EQ(animator.NextChange(), now + Time{100});
    Run(100);
    EXPECT_EQ(frames.size(), 2U);
    EXPECT_EQ(animator.NextChange(), now + Time{250});
}

TEST_F(AnimatorTest, KeepsTheBeatWhenATickIsLate)
{
    animator.Play(Named(L"Show"), now);
    animator.Advance(now + Time{130});
    EXPECT_EQ(animator.NextChange(), now + Time{200});
}

TEST_F(AnimatorTest, GoesOnWhereItWasWhenTheMachineHasSlept)
{
    animator.Play(Named(L"Show"), now);
    animator.Advance(now + Time{3'600'000});
    EXPECT_EQ(frames, (Lines{L"Show 0", L"Show 1"}));
}

TEST_F(AnimatorTest, LastPictureStaysAfterTheEnd)
{
    animator.Play(Named(L"Show"), now);
    Run(300);
    EXPECT_FALSE(animator.Running());
    EXPECT_EQ(animator.NextChange(), kNever);
    EXPECT_EQ(animator.Shown(), &Named(L"Show").frames[2]);
}

struct BranchCase {
    int draw;
    std::wstring second;
};

TEST_F(AnimatorTest, BranchesAreDrawnCumulatively)
{
    Named(L"Show").frames[0].branches = {{2, 30}, {0, 20}};
    for (const auto& [drawn, second] : {BranchCase{0, L"Show 2"},
                                        {29, L"Show 2"},
                                        {30, L"Show 0"},
                                        {49, L"Show 0"},
                                        {50, L"Show 1"},
                                        {99, L"Show 1"}}) {
        SCOPED_TRACE(drawn);
        draw = drawn;
        frames.clear();
        animator.Play(Named(L"Show"), now);
        Run(100);
        EXPECT_EQ(frames.at(1), second);
    }
}

TEST_F(AnimatorTest, BranchToAFrameThatDoesNotExistIsPassedBy)
{
    Named(L"Show").frames[0].branches = {{77, 100}};
    animator.Play(Named(L"Show"), now);
    Run(100);
    EXPECT_EQ(frames.at(1), L"Show 1");
}

TEST_F(AnimatorTest, FrameWithoutPictureIsShownOnlyWhenItHasADuration)
{
    acs::Animation& show = Named(L"Show");
    show.frames[0] = {};
    show.frames[1] = {};
    show.frames[1].duration = 10;
    animator.Play(show, now);
    EXPECT_EQ(frames, (Lines{L"Show 1"}));
    EXPECT_EQ(animator.Shown(), &show.frames[1]);
}

TEST_F(AnimatorTest, PictureWithoutDurationIsDrawnAndPassed)
{
    Named(L"Show").frames[0].duration = 0;
    animator.Play(Named(L"Show"), now);
    EXPECT_EQ(frames, (Lines{L"Show 0", L"Show 1"}));
}

TEST_F(AnimatorTest, EndlessLoopWithoutDurationIsGivenUp)
{
    animator.Play(Named(L"Spin"), now);
    EXPECT_FALSE(animator.Running());
}

TEST_F(AnimatorTest, LoopNeverEndsByItself)
{
    animator.Play(Named(L"Loop"), now);
    Run(100'000);
    EXPECT_TRUE(animator.Running());
    EXPECT_EQ(frames.size(), 1001U);
}

TEST_F(AnimatorTest, ReturnAnimationIsPlayedWholeWhenLeaving)
{
    animator.Play(Named(L"GetAttention"), now);
    Run(300);
    frames.clear();
    animator.Leave(&Named(L"Wave"), now);
    EXPECT_TRUE(animator.Running());
    Run(1000);
    EXPECT_EQ(frames, (Lines{L"GetAttentionReturn 0", L"GetAttentionReturn 1", L"GetAttentionReturn 2"}));
    EXPECT_FALSE(animator.Running());
}

TEST_F(AnimatorTest, ReturnAnimationThatIsPlayedNextAnywayIsPlayedOnce)
{
    animator.Play(Named(L"GetAttention"), now);
    Run(300);
    animator.Leave(&Named(L"GetAttentionReturn"), now);
    EXPECT_FALSE(animator.Running());
    animator.Play(Named(L"GetAttentionReturn"), now);
    Run(300);
    animator.Leave(nullptr, now);
    EXPECT_FALSE(animator.Running());
}

TEST_F(AnimatorTest, AnimationIsLeftOnlyOnce)
{
    animator.Play(Named(L"GetAttention"), now);
    Run(300);
    animator.Leave(nullptr, now);
    animator.Leave(nullptr, now);
    Run(1000);
    animator.Leave(nullptr, now);
    EXPECT_FALSE(animator.Running());
    EXPECT_EQ(std::count(frames.begin(), frames.end(), L"GetAttentionReturn 0"), 1);
}

TEST_F(AnimatorTest, MissingReturnAnimationIsDoneWithout)
{
    Named(L"GetAttention").returnAnimation = L"Nowhere";
    animator.Play(Named(L"GetAttention"), now);
    animator.Leave(nullptr, now);
    EXPECT_FALSE(animator.Running());
}

TEST_F(AnimatorTest, ExitFramesStartFromTheFrameLastShown)
{
    animator.Play(Named(L"Wave"), now);
    Run(300);
    EXPECT_FALSE(animator.Running());
    animator.Leave(nullptr, now);
    Run(1000);
    EXPECT_EQ(frames, (Lines{L"Wave 0", L"Wave 1", L"Wave 2", L"Wave 1", L"Wave 0"}));
}

TEST_F(AnimatorTest, FrameWithoutExitGoesOnAsUsual)
{
    acs::Animation& wave = Named(L"Wave");
    wave.frames[0].exitFrame.reset();
    animator.Play(wave, now);
    animator.Leave(nullptr, now);
    Run(1000);
    EXPECT_EQ(frames.at(1), L"Wave 1");
}

TEST_F(AnimatorTest, LoopIsLeftByItsExit)
{
    animator.Play(Named(L"Loop"), now);
    Run(1050);
    animator.Leave(nullptr, now);
    Run(100);
    EXPECT_FALSE(animator.Running());
    EXPECT_EQ(frames.back(), L"Loop 2");
}

TEST_F(AnimatorTest, ExitFramesThatGoInACircleAreGivenUp)
{
    acs::Animation& wave = Named(L"Wave");
    wave.frames[0].exitFrame = 1;
    wave.frames[1].exitFrame = 0;
    animator.Play(wave, now);
    animator.Leave(nullptr, now);
    Run(2000);
    EXPECT_FALSE(animator.Running());
}

TEST_F(AnimatorTest, AnimationWithoutTransitionIsCutOff)
{
    animator.Play(Named(L"Show"), now);
    animator.Leave(nullptr, now);
    EXPECT_FALSE(animator.Running());
    EXPECT_EQ(animator.Shown(), &Named(L"Show").frames[0]);
}

} // namespace
} // namespace voxtrel::agent::stage
