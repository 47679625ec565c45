#include "tests/tools/sample_source.h"

#include <gtest/gtest.h>

#include <cmath>

namespace voxtrel::acsc {

namespace {

using agent::acs::Branch;
using agent::acs::Transition;

// The one animation made of these lines.
SourceAnimation AnimationOf(const std::string& lines)
{
    return samples::Parsed("animation Test {\n" + lines + "\n}\n").animations.at(0);
}

double BodyAngle(const SourceFrame& frame) { return frame.layers.at(0).stance.parts.at(0).rotate; }

std::vector<double> BodyAngles(const SourceAnimation& animation)
{
    std::vector<double> angles;
    for (const SourceFrame& frame : animation.frames)
        angles.push_back(BodyAngle(frame));
    return angles;
}

std::vector<int> Durations(const SourceAnimation& animation)
{
    std::vector<int> durations;
    for (const SourceFrame& frame : animation.frames)
        durations.push_back(frame.duration);
    return durations;
}

} // namespace

TEST(AnimationSource, AFrameLastsATenthOfASecondUnlessItSaysOtherwise)
{
    const SourceAnimation animation =
        AnimationOf("frame rest\nframe left duration 30\npace 7\nframe rest\nframe none duration 0");
    EXPECT_EQ(Durations(animation), (std::vector<int>{10, 30, 7, 0}));
    EXPECT_TRUE(animation.frames[3].layers.empty());
    EXPECT_EQ(animation.transition, Transition::None);
}

TEST(AnimationSource, ATweenEndsWithItsPoseAndDoesNotShowItsStartAgain)
{
    const SourceAnimation animation =
        AnimationOf("frame left\ntween to right steps 4 ease linear duration 5");
    EXPECT_EQ(BodyAngles(animation), (std::vector<double>{-20, -10, 0, 10, 20}));
    EXPECT_EQ(Durations(animation), (std::vector<int>{10, 5, 5, 5, 5}));
}

TEST(AnimationSource, ATweenMaySayWhereItStarts)
{
    EXPECT_EQ(BodyAngles(AnimationOf("tween left to right steps 2 ease linear")),
              (std::vector<double>{0, 20}));
}

TEST(AnimationSource, EasesChangeTheWayButNotTheEnd)
{
    for (const std::string ease : {"inout", "in", "out", "linear", "overshoot"}) {
        SCOPED_TRACE(ease);
        const auto angles = BodyAngles(AnimationOf("frame left\ntween to right steps 8 ease " + ease));
        EXPECT_EQ(angles.back(), 20);
        for (std::size_t i = 1; i < angles.size(); ++i)
            EXPECT_TRUE(angles[i] > angles[i - 1] || ease == "overshoot");
    }
    const auto slowStart = BodyAngles(AnimationOf("frame left\ntween to right steps 8"));
    EXPECT_LT(slowStart[1] - slowStart[0], slowStart[4] - slowStart[3]);
    const auto tooFar = BodyAngles(AnimationOf("frame left\ntween to right steps 8 ease overshoot"));
    EXPECT_GT(tooFar[6], 20);
}

TEST(AnimationSource, WhatHasNoInBetweenChangesInTheMiddle)
{
    const SourceAnimation animation = AnimationOf("frame left\ntween to right steps 4 ease linear");
    std::vector<std::string> mouths;
    for (const SourceFrame& frame : animation.frames)
        mouths.push_back(frame.layers[0].stance.parts[2].draw);
    EXPECT_EQ(mouths, (std::vector<std::string>{"mouth", "mouth", "m_open", "m_open", "m_open"}));
}

TEST(AnimationSource, RepeatsTheLinesOfABlock)
{
    const auto angles = BodyAngles(AnimationOf("repeat 2 {\nframe left\nrepeat 2 { frame right }\n}"));
    EXPECT_EQ(angles, (std::vector<double>{-20, 20, 20, -20, 20, 20}));
}

TEST(AnimationSource, ShowsARangeOfPosesInEitherDirection)
{
    const CharacterSource source =
        samples::Parsed("pose walk1 { body rotate 1 }\npose walk2 { body rotate 2 }\n"
                        "pose walk3 { body rotate 3 }\nanimation Walk {\n"
                        "frames walk1..walk3 duration 5\nframes walk3..walk2\n}\n");
    EXPECT_EQ(BodyAngles(source.animations[0]), (std::vector<double>{1, 2, 3, 3, 2}));
    EXPECT_EQ(Durations(source.animations[0]), (std::vector<int>{5, 5, 5, 10, 10}));
}

TEST(AnimationSource, InsertsAnotherAnimationForwardsAndReversed)
{
    const CharacterSource source =
        samples::Parsed("animation First {\nframe left duration 20\nframe right mouths talk\n}\n"
                        "animation Second {\ninsert first\ninsert First reversed\n}\n");
    EXPECT_EQ(BodyAngles(source.animations[1]), (std::vector<double>{-20, 20, 20, -20}));
    EXPECT_EQ(Durations(source.animations[1]), (std::vector<int>{20, 10, 10, 20}));
    EXPECT_FALSE(source.animations[1].frames[1].mouths.has_value());
}

TEST(AnimationSource, LabelsBecomeFrameNumbers)
{
    const SourceAnimation animation =
        AnimationOf("@start\nframe rest\nframe left branch @start 30% branch @end 50 "
                    "exit @end\n@end\n@last\nframe rest exit @start\nleave exits");
    EXPECT_EQ(animation.frames[1].branches, (std::vector<Branch>{{0, 30}, {2, 50}}));
    EXPECT_EQ(animation.frames[1].exitFrame, 2);
    EXPECT_EQ(animation.frames[2].exitFrame, 0);
    EXPECT_EQ(animation.transition, Transition::ExitBranches);
}

TEST(AnimationSource, BranchesOfATweenBelongToItsLastFrame)
{
    const SourceAnimation animation =
        AnimationOf("@loop\nframe left\ntween to right steps 3 branch @loop 40% mouths talk");
    EXPECT_TRUE(animation.frames[1].branches.empty());
    EXPECT_TRUE(animation.frames[2].branches.empty());
    EXPECT_EQ(animation.frames[3].branches.size(), 1u);
    EXPECT_FALSE(animation.frames[2].mouths.has_value());
    EXPECT_TRUE(animation.frames[3].mouths.has_value());
}

TEST(AnimationSource, LeavingBackwardsWalksFromFrameToFrameAndOutAtTheEnd)
{
    const SourceAnimation animation = AnimationOf("frame rest\nframe left\nframe right\nleave backwards");
    ASSERT_EQ(animation.frames.size(), 4u);
    EXPECT_EQ(animation.transition, Transition::ExitBranches);
    EXPECT_EQ(animation.frames[0].exitFrame, 3);
    EXPECT_EQ(animation.frames[1].exitFrame, 0);
    EXPECT_EQ(animation.frames[2].exitFrame, 1);
    EXPECT_TRUE(animation.frames[3].layers.empty());
    EXPECT_EQ(animation.frames[3].duration, 0);
}

TEST(AnimationSource, NamesItsReturnAnimation)
{
    const SourceAnimation animation = AnimationOf("frame left\nreturn TestReturn");
    EXPECT_EQ(animation.transition, Transition::ReturnAnimation);
    EXPECT_EQ(animation.returnAnimation, L"TestReturn");
}

TEST(AnimationSource, LaysPicturesOverOneAnother)
{
    const CharacterSource source = samples::Parsed("pose stars empty { star show }\nanimation Stars {\n"
                                                   "frame rest+stars at 4,-5 + stars at 10, 20\n}\n");
    const std::vector<Layer>& layers = source.animations[0].frames[0].layers;
    ASSERT_EQ(layers.size(), 3u);
    EXPECT_EQ(layers[0].x, 0);
    EXPECT_EQ(layers[1].x, 4);
    EXPECT_EQ(layers[1].y, -5);
    EXPECT_EQ(layers[2].x, 10);
    EXPECT_EQ(layers[2].y, 20);
    EXPECT_TRUE(layers[0].stance.parts[0].shown);
    EXPECT_FALSE(layers[1].stance.parts[0].shown);
    EXPECT_TRUE(layers[1].stance.parts[3].shown);
}

TEST(AnimationSource, SwayIsAtTheNeutralPlaceAfterEachHalfPeriod)
{
    const SourceAnimation animation =
        AnimationOf("sway body rotate 8 move 0,2 period 40\nrepeat 5 { frame rest }");
    const auto angles = BodyAngles(animation);
    const std::vector<double> expected{0, 8, 0, -8, 0};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(angles[i], expected[i], 1e-9);
    EXPECT_NEAR(animation.frames[1].layers[0].stance.parts[0].move.y, 2, 1e-9);
}

TEST(AnimationSource, CountsEachSoundFileOnce)
{
    const CharacterSource source = samples::Parsed("animation A {\nframe rest sound ding.wav\nframe rest "
                                                   "sound dong.wav\nframe rest sound ding.wav\n}\n");
    EXPECT_EQ(source.usedSounds, (std::vector<std::string>{"ding.wav", "dong.wav"}));
    EXPECT_EQ(source.animations[0].frames[1].sound, 1);
    EXPECT_EQ(source.animations[0].frames[2].sound, 0);
}

struct Mistake {
    const char* lines; // inside an animation, which starts on line 1
    const char* told;
};

constexpr Mistake kMistakes[] = {
    {"frame rset", "2: no pose is called 'rset'"},
    {"frame rest\nframe", "3: a pose is missing at the end of the line"},
    {"frame rest duration -1", "2: the duration must be a whole number from 0 to 65535"},
    {"frame rest duration ten", "2: 'ten' stands where the duration, a number, should be"},
    {"frame rest mouths sing", "2: no mouth set is called 'sing'"},
    {"frame none mouths talk", "2: an empty frame has no mouths"},
    {"frame rest wobble", "2: 'wobble' was not expected here"},
    {"frame rest branch @there 20%", "2: no label of this animation is called '@there'"},
    {"frame rest exit @there", "2: no label of this animation is called '@there'"},
    {"@a\nframe rest branch @a 60% branch @a 50%", "3: a frame has at most three branches of together 100 %"},
    {"@a\nframe rest\n@a\nframe rest", "4: there is a label '@a' already"},
    {"frame rest\n@a", "1: the last label of the animation names no frame: nothing follows it"},
    {"tween to left steps 3",
     "2: no frame with a picture stands before this tween; say where it starts: tween POSE to POSE"},
    {"tween rest left steps 3", "2: 'to' is missing: tween [POSE] to POSE steps N"},
    {"tween rest to left", "2: 'steps' is missing: tween [POSE] to POSE steps N"},
    {"tween rest to left steps 3 ease softly",
     "2: 'ease' is followed by inout, in, out, linear or overshoot"},
    {"frames rest1-rest4", "2: 'rest1-rest4' is no range like walk1..walk8"},
    {"frames rest1..rest3", "2: no pose is called 'rest1'"},
    {"insert Nobody", "2: no animation above is called 'Nobody'"},
    {"repeat 3\nframe rest", "2: 'repeat' needs a { block }"},
    {"repeat 3 {\nframe rest\n@a\n}", "4: '@a' does not belong into a repeated block"},
    {"repeat 1000 { repeat 1000 { frame rest } }", "2: the animation has more than 2000 frames"},
    {"frame rest\nleave slowly", "3: 'leave' is followed by 'exits' or 'backwards'"},
    {"frame rest\nleave exits\nreturn Rest", "4: how the animation is left has been said already"},
    {"@a\nframe rest\nframe left exit @a\nleave backwards",
     "4: with 'leave backwards' no frame has branches or an exit"},
    {"sway nose rotate 3 period 20", "2: no part is called 'nose'"},
    {"sway body rotate 3\nframe rest", "2: 'period' is missing"},
    {"dance", "2: 'dance' was not expected here"},
    {"", "1: the animation has no frames"},
};

TEST(AnimationSource, TellsEachMistakeWithItsLine)
{
    for (const Mistake& mistake : kMistakes) {
        SCOPED_TRACE(mistake.lines);
        EXPECT_EQ(samples::MistakeIn("animation Test {\n" + std::string(mistake.lines) + "\n}\n"),
                  mistake.told);
    }
}

TEST(AnimationSource, RefusesASecondAnimationOfTheName)
{
    EXPECT_EQ(samples::MistakeIn("animation Wave { frame rest }\nanimation WAVE { frame rest }\n"),
              "2: there is an animation 'WAVE' already");
}

} // namespace voxtrel::acsc
