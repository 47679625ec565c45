#include "agent/acs/static_palette.h"

#include <algorithm>

namespace voxtrel::agent::acs {

namespace {

constexpr std::array<Color, kStaticColorsAtEachEnd> kFirst{{
    {0, 0, 0},
    {128, 0, 0},
    {0, 128, 0},
    {128, 128, 0},
    {0, 0, 128},
    {128, 0, 128},
    {0, 128, 128},
    {192, 192, 192},
    {192, 220, 192},
    {166, 202, 240},
}};

constexpr std::array<Color, kStaticColorsAtEachEnd> kLast{{
    {255, 251, 240},
    {160, 160, 164},
    {128, 128, 128},
    {255, 0, 0},
    {0, 255, 0},
    {255, 255, 0},
    {0, 0, 255},
    {255, 0, 255},
    {0, 255, 255},
    {255, 255, 255},
}};

} // namespace

const std::array<Color, 256>& StaticPalette()
{
    static const std::array<Color, 256> palette = [] {
        std::array<Color, 256> colors{};
        std::copy(kFirst.begin(), kFirst.end(), colors.begin());
        std::copy(kLast.begin(), kLast.end(), colors.end() - kStaticColorsAtEachEnd);
        return colors;
    }();
    return palette;
}

} // namespace voxtrel::agent::acs
