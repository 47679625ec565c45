#include "agent/stage/frame_composer.h"
#include "agent/stage/lip_sync.h"
#include "agent/stage/scaling.h"
#include "tests/agent/stage/test_character.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace voxtrel::agent::stage {
namespace {

using acs::Mouth;

Picture Disc(int side)
{
    Picture picture{{side, side}, {}, {}};
    picture.mask.resize(static_cast<std::size_t>(side) * side);
    picture.colors.resize(picture.mask.size() * 3);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const double dx = x + 0.5 - side / 2.0;
            const double dy = y + 0.5 - side / 2.0;
            if (dx * dx + dy * dy > side * side / 4.0)
                continue;
            const std::size_t i = static_cast<std::size_t>(y) * side + x;
            picture.mask[i] = 255;
            std::fill_n(picture.colors.begin() + static_cast<std::ptrdiff_t>(i) * 3, 3,
                        x < side / 2 ? 60 : 200);
        }
    }
    return picture;
}

long Covered(const Picture& picture) { return std::count(picture.mask.begin(), picture.mask.end(), 255); }

TEST(Scale, SameSizeIsTheSamePicture) { EXPECT_EQ(Scale(Disc(40), {40, 40}), Disc(40)); }

TEST(Scale, OutlineStaysHardAndKeepsItsArea)
{
    for (const int side : {20, 50, 85, 200}) {
        SCOPED_TRACE(side);
        const Picture scaled = Scale(Disc(128), {side, side});
        EXPECT_TRUE(std::all_of(scaled.mask.begin(), scaled.mask.end(),
                                [](std::uint8_t covered) { return covered == 0 || covered == 255; }));
        EXPECT_NEAR(static_cast<double>(Covered(scaled)) / (side * side), 0.785, 0.02);
    }
}

TEST(Scale, NothingBleedsInFromOutside)
{
    const Picture scaled = Scale(Disc(128), {50, 50});
    for (std::size_t i = 0; i < scaled.mask.size(); ++i) {
        if (scaled.mask[i] != 0) {
            EXPECT_GE(scaled.colors[i * 3], 30) << "darker than any colour of the disc, at " << i;
        }
    }
}

TEST(Scale, InteriorIsSmooth)
{
    Picture stripes{{64, 4}, {}, std::vector<std::uint8_t>(64 * 4, 255)};
    for (int i = 0; i < 64 * 4; ++i)
        stripes.colors.insert(stripes.colors.end(), 3, i % 2 == 0 ? 0 : 255);
    const Picture scaled = Scale(stripes, {16, 4});
    for (int x = 2; x < 14; ++x)
        EXPECT_NEAR(scaled.colors[x * 3], 128, 12) << x;
}

TEST(Scale, DownToASinglePixelAndBeyondTheRatio)
{
    EXPECT_EQ(Covered(Scale(Disc(128), {1, 1})), 1);
    EXPECT_EQ(Scale(Disc(4), {300, 2}).size, (Size{300, 2}));
}

TEST(RowsInUse, AreTheFirstAndTheOneBehindTheLast)
{
    Picture picture{{3, 5}, std::vector<std::uint8_t>(45), std::vector<std::uint8_t>(15)};
    EXPECT_EQ(RowsInUse(picture).end, 0);
    picture.mask[7] = picture.mask[11] = 255;
    EXPECT_EQ(RowsInUse(picture).first, 2);
    EXPECT_EQ(RowsInUse(picture).end, 4);
}

class ComposerTest : public ::testing::Test {
protected:
    acs::Frame Layers(std::vector<acs::FrameImage> images)
    {
        acs::Frame frame;
        frame.images = std::move(images);
        return frame;
    }

    acs::CharacterFile file = MakeTestCharacter();
    FrameComposer composer{file};
    const Size size{8, 8};
};

TEST_F(ComposerTest, FirstImageIsTheTopmost)
{
    const acs::Frame frame = Layers({{1, 4, 4}, {2, 0, 0}});
    const auto picture = composer.Compose(&frame, std::nullopt, size);
    EXPECT_EQ(ImageAt(*picture, 0, 0), 2);
    EXPECT_EQ(ImageAt(*picture, 5, 5), 1);
}

TEST_F(ComposerTest, ImagesAreClippedToTheFrame)
{
    const acs::Frame frame = Layers({{1, -5, 6}, {2, 6, -30000}, {3, 32767, 0}});
    const auto picture = composer.Compose(&frame, std::nullopt, size);
    EXPECT_EQ(ImageAt(*picture, 2, 7), 1);
    EXPECT_EQ(ImageAt(*picture, 3, 7), -1);
    EXPECT_EQ(ImageAt(*picture, 7, 0), -1);
}

TEST_F(ComposerTest, ImageThatDoesNotExistIsLeftOut)
{
    const acs::Frame frame = Layers({{999, 0, 0}, {2, 0, 0}});
    EXPECT_EQ(ImageAt(*composer.Compose(&frame, std::nullopt, size), 0, 0), 2);
}

TEST_F(ComposerTest, NoFrameIsAnEmptyPicture)
{
    EXPECT_EQ(Covered(*composer.Compose(nullptr, std::nullopt, size)), 0);
}

TEST_F(ComposerTest, MouthIsClippedToTheOutline)
{
    acs::Frame frame = Layers({{1, 0, 6}});
    frame.mouths = {{Mouth::Open, false, kFirstMouth, 2, 5}};
    const auto picture = composer.Compose(&frame, Mouth::Open, size);
    EXPECT_EQ(ImageAt(*picture, 2, 5), -1);
    EXPECT_EQ(ImageAt(*picture, 2, 6), kFirstMouth);
}

TEST_F(ComposerTest, MouthThatReplacesTheTopImageIsNotClipped)
{
    acs::Frame frame = Layers({{kFirstMouth + 9, 0, 0}, {1, 0, 6}});
    frame.mouths = {{Mouth::Open, true, kFirstMouth, 2, 5}};
    const auto picture = composer.Compose(&frame, Mouth::Open, size);
    EXPECT_EQ(ImageAt(*picture, 0, 0), -1);
    EXPECT_EQ(ImageAt(*picture, 2, 5), kFirstMouth);
    EXPECT_EQ(ImageAt(*composer.Compose(&frame, std::nullopt, size), 0, 0), kFirstMouth + 9);
}

TEST_F(ComposerTest, UnchangedFrameCostsNothing)
{
    const auto images = std::make_shared<TestImages>();
    file.images = images;
    const acs::Frame* frame = &file.animations[0].frames[0];
    const auto first = composer.Compose(frame, Mouth::Open, size);
    const auto closed = composer.Compose(frame, Mouth::Closed, size);
    EXPECT_NE(first, closed);
    EXPECT_EQ(composer.Compose(frame, Mouth::Open, size), first);
    EXPECT_EQ(images->decoded.count(0), 1U);
}

struct MouthCase {
    Mouth wanted;
    std::vector<Mouth> drawn;
    std::optional<Mouth> shown;
};

TEST(OverlayFor, MissingMouthIsServedByTheNearest)
{
    const MouthCase cases[] = {
        {Mouth::Fully, {Mouth::Fully, Mouth::Open}, Mouth::Fully},
        {Mouth::Fully, {Mouth::Closed, Mouth::Open, Mouth::Slight}, Mouth::Open},
        {Mouth::Fully, {Mouth::Closed, Mouth::Slight}, Mouth::Slight},
        {Mouth::Open, {Mouth::Fully, Mouth::Partly}, Mouth::Partly},
        {Mouth::Medium, {Mouth::Open, Mouth::Narrow}, Mouth::Narrow},
        {Mouth::Medium, {Mouth::Open}, Mouth::Open},
        {Mouth::Narrow, {Mouth::Slight, Mouth::Medium}, Mouth::Medium},
        {Mouth::Narrow, {Mouth::Slight}, Mouth::Slight},
        {Mouth::Closed, {Mouth::Slight}, std::nullopt},
        {Mouth::Slight, {Mouth::Closed}, std::nullopt},
        {Mouth::Open, {}, std::nullopt},
    };
    for (const MouthCase& c : cases) {
        SCOPED_TRACE(&c - cases);
        acs::Frame frame;
        for (const Mouth mouth : c.drawn)
            frame.mouths.push_back({mouth, false, 0, 0, 0});
        const acs::MouthOverlay* overlay = OverlayFor(frame, c.wanted);
        ASSERT_EQ(overlay != nullptr, c.shown.has_value());
        if (overlay != nullptr) {
            EXPECT_EQ(overlay->mouth, *c.shown);
        }
    }
}

} // namespace
} // namespace voxtrel::agent::stage
