#include "tools/svgico/icon_file.h"

#include <gtest/gtest.h>

namespace voxtrel::svgico {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(MakeIconFile, EntriesTellWhereTheirImagesStand)
{
    const Bytes icon = MakeIconFile({{16, {1, 2, 3}}, {256, {4, 5}}});
    const Bytes expected = {0,  0,  1, 0, 2, 0,                                 // header
                            16, 16, 0, 0, 1, 0, 32, 0, 3, 0, 0, 0, 38, 0, 0, 0, // 16 pixels, 3 bytes from 38
                            0,  0,  0, 0, 1, 0, 32, 0, 2, 0, 0, 0, 41, 0, 0, 0, // 256 pixels, 2 bytes from 41
                            1,  2,  3, 4, 5};
    EXPECT_EQ(icon, expected);
}

TEST(MakeIconFile, LongImagesHaveTheirWholeLength)
{
    const Bytes icon = MakeIconFile({{32, Bytes(70000, 9)}});
    EXPECT_EQ(Bytes(icon.begin() + 14, icon.begin() + 18), (Bytes{0x70, 0x11, 0x01, 0x00}));
    EXPECT_EQ(icon.size(), 22u + 70000u);
}

} // namespace
} // namespace voxtrel::svgico
