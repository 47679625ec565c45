#include "tools/acsc/quantizer.h"

#include "agent/acs/static_palette.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>

namespace voxtrel::acsc {

namespace {

using agent::acs::Color;
using agent::acs::Image;

Pixels Row(const std::vector<Color>& colors)
{
    Pixels pixels(static_cast<int>(colors.size()), 1);
    for (std::size_t i = 0; i < colors.size(); ++i)
        pixels.data[i] = {colors[i].red, colors[i].green, colors[i].blue, 255};
    return pixels;
}

// Every pixel its own colour.
Pixels Rainbow()
{
    std::vector<Color> colors;
    for (int red = 0; red < 256; red += 8) {
        for (int green = 0; green < 256; green += 8)
            colors.push_back({static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
                              static_cast<std::uint8_t>((red + green) / 4)});
    }
    return Row(colors);
}

ColorCount CountOf(const Pixels& pixels)
{
    ColorCount count;
    count.Add(pixels);
    return count;
}

} // namespace

TEST(MakePalette, KeepsTheStaticColours)
{
    const auto palette = MakePalette(CountOf(Rainbow()));
    for (std::size_t i = 0; i < palette.size(); ++i) {
        if (agent::acs::IsStaticEntry(i)) {
            EXPECT_EQ(palette[i], agent::acs::StaticPalette()[i]) << i;
        }
    }
}

TEST(MakePalette, FewColoursStayExactlyAsTheyAre)
{
    std::vector<Color> colors;
    for (int i = 0; i < 235; ++i)
        colors.push_back({static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(255 - i), 77});
    const Pixels pixels = Row(colors);
    const auto palette = MakePalette(CountOf(pixels));
    const Image image = PaletteMapper(palette).Map(pixels);
    for (std::size_t i = 0; i < colors.size(); ++i)
        EXPECT_EQ(palette[image.pixels[i]], colors[i]);
}

TEST(MakePalette, ComesCloseToManyColours)
{
    const Pixels rainbow = Rainbow();
    const auto palette = MakePalette(CountOf(rainbow));
    const Image image = PaletteMapper(palette).Map(rainbow);
    double sum = 0;
    for (std::size_t i = 0; i < rainbow.data.size(); ++i) {
        const Color& found = palette[image.pixels[i]];
        sum += std::abs(found.red - rainbow.data[i].red) + std::abs(found.green - rainbow.data[i].green) +
               std::abs(found.blue - rainbow.data[i].blue);
    }
    EXPECT_LT(sum / static_cast<double>(rainbow.data.size()), 16);
}

TEST(MakePalette, AFlatAreaKeepsItsColourAmongMany)
{
    Pixels pixels = Rainbow();
    const Rgba flat{201, 99, 53, 255};
    pixels.data.insert(pixels.data.end(), 5000, flat);
    pixels.width += 5000;
    const auto palette = MakePalette(CountOf(pixels));
    const Image image = PaletteMapper(palette).Map(pixels);
    EXPECT_EQ(palette[image.pixels.back()], (Color{201, 99, 53}));
}

TEST(MakePalette, IsTheSameOnEveryRun)
{
    EXPECT_EQ(MakePalette(CountOf(Rainbow())), MakePalette(CountOf(Rainbow())));
}

TEST(PaletteMapper, TransparentPixelsTakeTheTransparentEntryAndNoOthersDo)
{
    Pixels pixels = Row({{255, 0, 255}, {255, 0, 254}, {0, 0, 0}});
    pixels.data[2] = {};
    const Image image = PaletteMapper(MakePalette(CountOf(pixels))).Map(pixels);
    EXPECT_NE(image.pixels[0], kTransparentIndex);
    EXPECT_NE(image.pixels[1], kTransparentIndex);
    EXPECT_EQ(image.pixels[2], kTransparentIndex);
}

TEST(PaletteMapper, DoesNotDither)
{
    const Pixels flat = Row(std::vector<Color>(64, {123, 45, 67}));
    ColorCount count = CountOf(Rainbow());
    count.Add(flat);
    const Image image = PaletteMapper(MakePalette(count)).Map(flat);
    EXPECT_EQ(std::set<std::uint8_t>(image.pixels.begin(), image.pixels.end()).size(), 1u);
}

} // namespace voxtrel::acsc
