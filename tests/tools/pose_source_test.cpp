#include "tests/tools/sample_source.h"

#include <gtest/gtest.h>

#include <cmath>

namespace voxtrel::acsc {

namespace {

constexpr std::size_t kBody = 0, kHead = 1, kMouth = 2, kStar = 3;

// The stance of the pose named test in these lines.
Stance TestStance(const std::string& lines)
{
    return samples::Parsed(lines + "\nanimation A { frame test }\n")
        .animations.at(0)
        .frames.at(0)
        .layers.at(0)
        .stance;
}

void ExpectPoint(Point point, double x, double y)
{
    EXPECT_NEAR(point.x, x, 1e-9);
    EXPECT_NEAR(point.y, y, 1e-9);
}

} // namespace

TEST(PoseSource, PartsStandAsDrawnUnlessThePoseSaysOtherwise)
{
    const Stance stance =
        TestStance("pose test {\n head rotate 5 move 1,-2 scale 2 opacity 0.5\n mouth hide\n star show\n}");
    EXPECT_EQ(stance.parts[kBody], (PartStance{0, {0, 0}, {1, 1}, 1, "body", true}));
    EXPECT_EQ(stance.parts[kHead], (PartStance{5, {1, -2}, {2, 2}, 0.5, "head", true}));
    EXPECT_FALSE(stance.parts[kMouth].shown);
    EXPECT_TRUE(stance.parts[kStar].shown);
    EXPECT_EQ(stance.paintOrder, (std::vector<int>{0, 1, 2, 3}));
}

TEST(PoseSource, HiddenPartsShowOnlyWhereAPoseSaysSo)
{
    EXPECT_FALSE(TestStance("pose test { body rotate 1 }").parts[kStar].shown);
}

TEST(PoseSource, ASettingReplacesTheOneItBeginsWith)
{
    const Stance stance = TestStance("pose a { head rotate 5 move 1,1 }\npose test from a { head rotate 7 }");
    EXPECT_EQ(stance.parts[kHead].rotate, 7);
    EXPECT_EQ(stance.parts[kHead].move, (Point{1, 1}));
}

TEST(PoseSource, PosesAreLaidOverOneAnother)
{
    const Stance stance =
        TestStance("pose a { head rotate 5 move 1,1 }\npose b { head rotate 9\n body rotate 2 }\n"
                   "pose test from a + b { }");
    EXPECT_EQ(stance.parts[kHead].rotate, 9);
    EXPECT_EQ(stance.parts[kHead].move, (Point{1, 1}));
    EXPECT_EQ(stance.parts[kBody].rotate, 2);
}

TEST(PoseSource, AnEmptyPoseShowsOnlyWhatItNames)
{
    const Stance stance = TestStance("pose test empty { star show scale 2,-1 }");
    EXPECT_FALSE(stance.parts[kBody].shown);
    EXPECT_FALSE(stance.parts[kMouth].shown);
    EXPECT_TRUE(stance.parts[kStar].shown);
    EXPECT_EQ(stance.parts[kStar].scale, (Point{2, -1}));
}

TEST(PoseSource, PartsCanBePaintedNextToOthers)
{
    EXPECT_EQ(TestStance("pose test { body above head }").paintOrder, (std::vector<int>{1, 0, 2, 3}));
    EXPECT_EQ(TestStance("pose test { star below body }").paintOrder, (std::vector<int>{3, 0, 1, 2}));
}

TEST(TransformOf, TurnsAPartAboutItsPivot)
{
    const CharacterSource source =
        samples::Parsed("pose test { body rotate 90 }\nanimation A { frame test }\n");
    const Affine transform =
        TransformOf(source.parts, source.animations[0].frames[0].layers[0].stance, kBody);
    ExpectPoint(transform({20, 30}), 20, 30);
    ExpectPoint(transform({20, 20}), 30, 30); // clockwise: what was above is to the right
}

TEST(TransformOf, CarriesPartsAlongWithWhatTheyHangOn)
{
    const CharacterSource source = samples::Parsed(
        "pose test { body rotate 90 move 0,1\n head move 3,0 }\nanimation A { frame test }\n");
    const Affine transform =
        TransformOf(source.parts, source.animations[0].frames[0].layers[0].stance, kMouth);
    // The head's shift to the right leads down, for the body lies on its side.
    ExpectPoint(transform({20, 20}), 30, 34);
}

TEST(TransformOf, ScalesAboutThePivot)
{
    const CharacterSource source =
        samples::Parsed("pose test { body scale 2,-1 }\nanimation A { frame test }\n");
    const Affine transform =
        TransformOf(source.parts, source.animations[0].frames[0].layers[0].stance, kBody);
    ExpectPoint(transform({21, 31}), 22, 29);
}

struct Mistake {
    const char* lines;
    const char* told;
};

constexpr Mistake kMistakes[] = {
    {"pose a { nose rotate 3 }", "1: no part is called 'nose'"},
    {"pose a {\n head\n}", "2: what 'head' does is missing"},
    {"pose a {\n head rotate\n}", "2: an angle is missing at the end of the line"},
    {"pose a {\n head move 3\n}", "2: '3' stands where a shift, two numbers like 12,-8, should be"},
    {"pose a {\n head draw m_open\n}", "2: 'm_open' is no variant of 'head'"},
    {"pose a {\n head above head\n}", "2: a part cannot be painted next to itself"},
    {"pose a {\n head twist 3\n}", "2: 'twist' was not expected here"},
    {"pose a", "1: the pose 'a' has no { block }"},
    {"pose rest { }", "1: there is a pose 'rest' already"},
    {"pose a from nobody { }", "1: no pose is called 'nobody'"},
    {"part head", "1: there is a part 'head' already"},
    {"part tail on nobody", "1: no part is called 'nobody'"},
    {"part a on b\npart b on a", "1: 'a' hangs on itself in the end"},
    {"mouths sing {\n shut mouth draw mouth\n}",
     "2: 'shut' is no mouth; they are closed, slight, partly, open, fully, medium, narrow"},
    {"mouths sing {\n closed mouth draw mouth\n}", "1: the mouth 'slight' is missing in 'sing'"},
};

TEST(PoseSource, TellsEachMistakeWithItsLine)
{
    for (const Mistake& mistake : kMistakes) {
        SCOPED_TRACE(mistake.lines);
        EXPECT_EQ(samples::MistakeIn(mistake.lines), mistake.told);
    }
}

} // namespace voxtrel::acsc
