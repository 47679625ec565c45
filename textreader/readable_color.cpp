#include "textreader/readable_color.h"

#include <algorithm>
#include <cmath>

namespace voxtrel::textreader {

namespace {

constexpr double kTolerated = 3.9; // pure red on white, the colour that words have at first, stays as it is
constexpr double kWanted = 4.5;
constexpr int kSteps = 32;

double Linear(std::int32_t byte)
{
    const double value = (byte & 0xFF) / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(std::int32_t color)
{
    return 0.2126 * Linear(color) + 0.7152 * Linear(color >> 8) + 0.0722 * Linear(color >> 16);
}

std::int32_t Mixed(std::int32_t from, std::int32_t to, int step)
{
    std::int32_t mixed = 0;
    for (const int shift : {0, 8, 16}) {
        const std::int32_t a = (from >> shift) & 0xFF;
        const std::int32_t b = (to >> shift) & 0xFF;
        mixed |= (a + (b - a) * step / kSteps) << shift;
    }
    return mixed;
}

} // namespace

double Contrast(std::int32_t one, std::int32_t other)
{
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

std::int32_t ReadableOn(std::int32_t background, std::int32_t color)
{
    if (Contrast(background, color) >= kTolerated)
        return color;
    const std::int32_t target = Contrast(background, 0) > Contrast(background, 0xFFFFFF) ? 0 : 0xFFFFFF;
    for (int step = 1; step < kSteps; ++step) {
        const std::int32_t mixed = Mixed(color, target, step);
        if (Contrast(background, mixed) >= kWanted)
            return mixed;
    }
    return target;
}

} // namespace voxtrel::textreader
