#include "tools/acsc/color_space.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace voxtrel::acsc {

namespace {

double Linear(unsigned value)
{
    static const std::array<double, 256> table = [] {
        std::array<double, 256> linear{};
        for (std::size_t i = 0; i < linear.size(); ++i) {
            const double s = static_cast<double>(i) / 255;
            linear[i] = s <= 0.04045 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
        }
        return linear;
    }();
    return table[value & 0xFF];
}

std::uint32_t Gamma(double linear)
{
    const double c = std::clamp(linear, 0.0, 1.0);
    const double s = c <= 0.0031308 ? 12.92 * c : 1.055 * std::pow(c, 1 / 2.4) - 0.055;
    return static_cast<std::uint32_t>(std::lround(s * 255));
}

} // namespace

PerceivedColor Perceive(std::uint32_t rgb)
{
    const double red = Linear(rgb >> 16), green = Linear(rgb >> 8), blue = Linear(rgb);
    const double l = std::cbrt(0.4122214708 * red + 0.5363325363 * green + 0.0514459929 * blue);
    const double m = std::cbrt(0.2119034982 * red + 0.6806995451 * green + 0.1073969566 * blue);
    const double s = std::cbrt(0.0883024619 * red + 0.2817188376 * green + 0.6299787005 * blue);
    return {static_cast<float>(0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s),
            static_cast<float>(1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s),
            static_cast<float>(0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s)};
}

std::uint32_t Unperceive(const PerceivedColor& color)
{
    const double l = std::pow(color.lightness + 0.3963377774 * color.a + 0.2158037573 * color.b, 3);
    const double m = std::pow(color.lightness - 0.1055613458 * color.a - 0.0638541728 * color.b, 3);
    const double s = std::pow(color.lightness - 0.0894841775 * color.a - 1.2914855480 * color.b, 3);
    const double red = 4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s;
    const double green = -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s;
    const double blue = -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s;
    return (Gamma(red) << 16) | (Gamma(green) << 8) | Gamma(blue);
}

} // namespace voxtrel::acsc
