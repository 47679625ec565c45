#include "agent/stage/balloon_layout.h"
#include "agent/stage/balloon_shape.h"

#include "tests/agent/stage/stage_fakes.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::stage {
namespace {

const Rect kWork{0, 0, 1000, 700};
const BalloonMetrics kMetrics = MetricsAt(1);
const int kDistance = kMetrics.wedgeLength + kMetrics.gap;

bool Inside(const Rect& inner, const Rect& outer)
{
    return inner.x >= outer.x && inner.y >= outer.y && inner.Right() <= outer.Right() &&
           inner.Bottom() <= outer.Bottom();
}

TEST(PlaceBalloon, StandsAboveTheFigureInItsMiddle)
{
    const BalloonPlace place = PlaceBalloon({200, 60}, {400, 300, 100, 128}, kWork, kMetrics);
    EXPECT_EQ(place.body, (Rect{350, 300 - kDistance - 60, 200, 60}));
    EXPECT_EQ(place.wedgeEdge, Edge::Bottom);
    EXPECT_EQ(place.wedgeCenter, 100);
}

TEST(PlaceBalloon, GoesBelowWhereThereIsNoRoomAbove)
{
    const BalloonPlace place = PlaceBalloon({200, 60}, {400, 40, 100, 128}, kWork, kMetrics);
    EXPECT_EQ(place.body.y, 168 + kDistance);
    EXPECT_EQ(place.wedgeEdge, Edge::Top);
}

TEST(PlaceBalloon, GoesToTheSideWithMoreRoomWhereNeitherFits)
{
    const Rect low{0, 0, 1000, 200};
    EXPECT_EQ(PlaceBalloon({200, 60}, {100, 40, 100, 128}, low, kMetrics).wedgeEdge, Edge::Left);
    const BalloonPlace place = PlaceBalloon({200, 60}, {800, 40, 100, 128}, low, kMetrics);
    EXPECT_EQ(place.wedgeEdge, Edge::Right);
    EXPECT_EQ(place.body.Right(), 800 - kDistance);
}

TEST(PlaceBalloon, SlidesIntoTheWorkAreaWhileTheWedgeFollowsTheFigure)
{
    const BalloonPlace place = PlaceBalloon({200, 60}, {0, 300, 100, 128}, kWork, kMetrics);
    EXPECT_EQ(place.body.x, 0);
    EXPECT_EQ(place.wedgeCenter, 50);
}

TEST(PlaceBalloon, WedgeKeepsToTheStraightPartOfTheEdge)
{
    const BalloonPlace place = PlaceBalloon({200, 60}, {-90, 300, 100, 128}, kWork, kMetrics);
    EXPECT_EQ(place.body.x, 0);
    EXPECT_GE(place.wedgeCenter - kMetrics.wedgeWidth / 2, kMetrics.cornerRadius);
}

TEST(PlaceBalloon, IsInsideTheWorkAreaWhereverTheFigureStands)
{
    for (int x = -150; x < 1100; x += 37) {
        for (int y = -150; y < 800; y += 37) {
            const BalloonPlace place = PlaceBalloon({300, 120}, {x, y, 128, 128}, kWork, kMetrics);
            EXPECT_TRUE(Inside(place.body, kWork)) << x << ", " << y;
        }
    }
}

TEST(PlaceBalloon, NeverCoversAFigureThatLeavesRoomForIt)
{
    const BalloonPlace place = PlaceBalloon({300, 120}, {10, 10, 128, 128}, kWork, kMetrics);
    EXPECT_GE(place.body.y, 138);
}

TEST(AverageCharacterWidth, IsNeverZero)
{
    FakeStageView view;
    EXPECT_EQ(AverageCharacterWidth(view, {L"Sans", 10, false, false}), 5);
    EXPECT_EQ(AverageCharacterWidth(view, {L"Sans", 1, false, false}), 1);
}

class BalloonShapeTest : public ::testing::TestWithParam<Edge> {
protected:
    BalloonShapeTest()
    {
        balloon.body = {100, 100, 80, 60};
        balloon.wedgeEdge = GetParam();
        balloon.wedgeCenter = 30;
        balloon.wedgeWidth = 12;
        balloon.wedgeLength = 15;
        balloon.cornerRadius = 7;
        balloon.colors = {{0, 0, 0}, {255, 251, 240}, {10, 20, 30}};
    }

    bool Covered(const Picture& picture, Point onScreen) const
    {
        const Rect bounds = BalloonBounds(balloon);
        return picture.mask.at((onScreen.y - bounds.y) * bounds.width + onScreen.x - bounds.x) != 0;
    }

    // Along the wedge's axis, at a distance from the body.
    Point OnTheWedge(int distance, int aside) const
    {
        switch (balloon.wedgeEdge) {
        case Edge::Bottom:
            return {130 + aside, 160 + distance};
        case Edge::Top:
            return {130 + aside, 99 - distance};
        case Edge::Left:
            return {99 - distance, 130 + aside};
        default:
            return {180 + distance, 130 + aside};
        }
    }

    BalloonPicture balloon;
};

TEST_P(BalloonShapeTest, WedgeStandsOnItsEdgeAndGrowsThinner)
{
    const Picture picture = PaintBalloonShape(balloon, 1);
    EXPECT_TRUE(Covered(picture, OnTheWedge(0, 4)));
    EXPECT_TRUE(Covered(picture, OnTheWedge(0, -5)));
    EXPECT_TRUE(Covered(picture, OnTheWedge(10, 0)));
    EXPECT_FALSE(Covered(picture, OnTheWedge(10, 4)));
    EXPECT_FALSE(Covered(picture, OnTheWedge(0, 9)));
}

TEST_P(BalloonShapeTest, CornersAreRoundAndTheMiddleHasTheBackgroundColour)
{
    const Picture picture = PaintBalloonShape(balloon, 1);
    const Rect bounds = BalloonBounds(balloon);
    for (const Point corner : {Point{100, 100}, {179, 100}, {100, 159}, {179, 159}})
        EXPECT_FALSE(Covered(picture, corner));
    const std::size_t middle = (130 - bounds.y) * bounds.width + 140 - bounds.x;
    EXPECT_EQ(picture.colors.at(middle * 3), 255);
    EXPECT_EQ(picture.colors.at(middle * 3 + 1), 251);
    EXPECT_EQ(picture.colors.at(middle * 3 + 2), 240);
}

TEST_P(BalloonShapeTest, BorderHasItsOwnColour)
{
    balloon.wedgeCenter = 15;
    const Picture picture = PaintBalloonShape(balloon, 1);
    const Rect bounds = BalloonBounds(balloon);
    for (const Point edge : {Point{150, 100}, {150, 159}, {100, 145}, {179, 145}}) {
        const std::size_t i = (edge.y - bounds.y) * bounds.width + edge.x - bounds.x;
        EXPECT_EQ(picture.colors.at(i * 3), 10) << edge.x << ", " << edge.y;
    }
}

TEST_P(BalloonShapeTest, HasItsShapeInFinerPixelsToo)
{
    const Picture coarse = PaintBalloonShape(balloon, 1);
    const Picture fine = PaintBalloonShape(balloon, 1, 2);
    ASSERT_EQ(fine.size, (Size{coarse.size.width * 2, coarse.size.height * 2}));
    const auto covered = [](const Picture& picture) {
        return static_cast<double>(std::count(picture.mask.begin(), picture.mask.end(), 255));
    };
    EXPECT_NEAR(covered(fine) / covered(coarse), 4, 0.05);
    // A border of one pixel is two of the finer ones wide.
    const Rect bounds = BalloonBounds(balloon);
    const auto red = [&](int column) {
        const int row = 2 * (150 - bounds.y);
        return fine.colors.at(
            (static_cast<std::size_t>(row) * fine.size.width + 2 * (100 - bounds.x) + column) * 3);
    };
    if (balloon.wedgeEdge == Edge::Left)
        return; // the wedge stands there
    EXPECT_EQ(red(0), 10);
    EXPECT_EQ(red(1), 10);
    EXPECT_EQ(red(3), 255);
}

INSTANTIATE_TEST_SUITE_P(Edges, BalloonShapeTest,
                         ::testing::Values(Edge::Top, Edge::Bottom, Edge::Left, Edge::Right));

} // namespace
} // namespace voxtrel::agent::stage
