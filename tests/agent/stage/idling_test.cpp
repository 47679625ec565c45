#include "tests/agent/stage/stage_test.h"

namespace voxtrel::agent::stage {
namespace {

using IdlingTest = StageTest;

TEST_F(IdlingTest, BeginsTenSecondsAfterTheLastActivity)
{
    ShowGenie();
    view->Run(9990);
    EXPECT_TRUE(events.Take().empty());
    view->Run(20);
    EXPECT_EQ(events.Take(), (Lines{L"idle"}));
    EXPECT_EQ(animations.back(), L"Blink");
}

TEST_F(IdlingTest, IsToldOnceAndNotForEachAnimation)
{
    ShowGenie();
    view->Run(55'000);
    EXPECT_EQ(events.Take(), (Lines{L"idle"}));
    EXPECT_GT(std::count(animations.begin(), animations.end(), L"Blink"), 3);
}

TEST_F(IdlingTest, PauseIsCountedFromTheEndOfTheAnimationBefore)
{
    ShowGenie();
    chance = [](int bound) { return bound - 1; };
    view->Run(10'250);
    frames.clear();
    view->Run(12'850);
    EXPECT_TRUE(frames.empty());
    view->Run(200);
    EXPECT_FALSE(frames.empty());
}

TEST_F(IdlingTest, GoesThroughThreeLevelsAndStaysInTheLast)
{
    ShowGenie();
    view->Run(69'000);
    EXPECT_EQ(std::count(animations.begin(), animations.end(), L"Yawn"), 0);
    view->Run(20'000);
    EXPECT_GT(std::count(animations.begin(), animations.end(), L"Yawn"), 0);
    EXPECT_EQ(std::count(animations.begin(), animations.end(), L"Sleep"), 0);
    view->Run(150'000);
    EXPECT_EQ(animations.back(), L"Sleep");
    view->Run(600'000);
    EXPECT_EQ(animations.back(), L"Sleep");
}

TEST_F(IdlingTest, LevelWithoutAnimationsIsServedByTheOneBefore)
{
    acs::CharacterFile file = MakeTestCharacter();
    std::erase_if(file.states, [](const acs::State& state) { return state.name != L"IDLINGLEVEL1"; });
    Rebuild(file);
    ShowGenie();
    view->Run(300'000);
    EXPECT_EQ(animations.back(), L"Blink");
}

TEST_F(IdlingTest, CharacterWithoutIdleAnimationsNeverWakes)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.states.clear();
    Rebuild(file);
    ShowGenie();
    EXPECT_EQ(view->ticker->NextTick(), kNever);
}

TEST_F(IdlingTest, PendingReturnIsPlayedBeforeTheFirstIdleAnimation)
{
    ShowGenie();
    Ignore(genie->Play(L"getattention"));
    view->Run(10'250);
    animations.clear();
    view->Run(500);
    EXPECT_EQ(animations, (Lines{L"GetAttentionReturn", L"Blink"}));
}

TEST_F(IdlingTest, RequestEndsASleepThatLoops)
{
    ShowGenie();
    view->Run(300'000);
    ASSERT_EQ(animations.back(), L"Sleep");
    events.Take();
    frames.clear();
    Ignore(genie->Speak(L"hello"));
    view->Run(150);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"idle over", L"balloon shown"}));
    EXPECT_EQ(frames, (Lines{L"Sleep 2", L"RestPose 0"}));
}

TEST_F(IdlingTest, NeverWhileHidden)
{
    view->Run(600'000);
    EXPECT_TRUE(animations.empty());
    EXPECT_EQ(view->ticker->NextTick(), kNever);
}

TEST_F(IdlingTest, NeverWhileSpeaking)
{
    ShowGenie();
    std::wstring text;
    for (int i = 0; i < 300; ++i)
        text += L"word ";
    Ignore(genie->Speak(text));
    view->Run(29'000);
    EXPECT_EQ(animations.back(), L"RestPose");
}

TEST_F(IdlingTest, NeverWhileDragged)
{
    ShowGenie();
    Windows().input->Press(1, 0, {401, 401});
    Windows().input->Move({450, 450});
    animations.clear();
    view->Run(600'000);
    EXPECT_TRUE(animations.empty());
    Windows().input->Release(1, 0, {450, 450});
    view->Run(10'050);
    EXPECT_EQ(animations, (Lines{L"Blink"}));
}

TEST_F(IdlingTest, MinuteAtRestTakesFewTicks)
{
    ShowGenie();
    view->ticks = 0;
    view->Run(60'000);
    EXPECT_LT(view->ticks, 60);
}

} // namespace
} // namespace voxtrel::agent::stage
