#include "tools/acsc/pixels.h"

#include <gtest/gtest.h>

#include <string>

namespace voxtrel::acsc {

namespace {

// '#' is opaque, '+' nearly, '-' hardly, ' ' not at all.
Pixels FromRows(const std::vector<std::string>& rows)
{
    Pixels pixels(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()));
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            const char c = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
            const int alpha = c == '#' ? 255 : c == '+' ? 200 : c == '-' ? 60 : 0;
            if (alpha > 0)
                pixels.At(x, y) = {40, 80, 120, static_cast<std::uint8_t>(alpha)};
        }
    }
    return pixels;
}

} // namespace

TEST(HardenOutline, LeavesNothingHalfTransparent)
{
    Pixels pixels = FromRows({"-++-", "+##+", "-++-"});
    HardenOutline(pixels);
    EXPECT_EQ(pixels.data, FromRows({" ## ", "####", " ## "}).data);
}

TEST(HardenOutline, RemovesSpecksButKeepsSmallShapes)
{
    Pixels pixels = FromRows({"#    #", "     #", "      ", "#     ", " #    ", "  #   "});
    HardenOutline(pixels);
    EXPECT_EQ(pixels.data, FromRows({"      ", "      ", "      ", "#     ", " #    ", "  #   "}).data);
}

TEST(HardenOutline, ClosesHolesOfOnePixel)
{
    Pixels pixels = FromRows({"####", "# ##", "#  #", "####"});
    HardenOutline(pixels);
    EXPECT_EQ(pixels.At(1, 1).alpha, 0); // two pixels are a hole that was drawn
    pixels = FromRows({"###", "# #", "###"});
    HardenOutline(pixels);
    EXPECT_EQ(pixels.At(1, 1), (Rgba{40, 80, 120, 255}));
}

TEST(ContentBox, SurroundsWhatIsOpaque)
{
    const Box box = ContentBox(FromRows({"     ", "  #  ", " #   ", "     "}));
    EXPECT_EQ(box.left, 1);
    EXPECT_EQ(box.top, 1);
    EXPECT_EQ(box.right, 3);
    EXPECT_EQ(box.bottom, 3);
    EXPECT_TRUE(ContentBox(FromRows({"  "})).Empty());
}

TEST(DifferenceBox, SurroundsWhatChanged)
{
    const Box box = DifferenceBox(FromRows({"####", "####"}), FromRows({"####", "## #"}));
    EXPECT_EQ(box.left, 2);
    EXPECT_EQ(box.top, 1);
    EXPECT_EQ(box.Width(), 1);
    EXPECT_EQ(box.Height(), 1);
}

TEST(Crop, KeepsTheBox)
{
    EXPECT_EQ(Crop(FromRows({"#   ", " ## ", "    "}), {1, 0, 3, 2}).data, FromRows({"  ", "##"}).data);
}

} // namespace voxtrel::acsc
