#include "agent/stage/scaling.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

// Two passes, rows and then columns, with a cubic filter that is widened when the picture shrinks, so that
// every source pixel has its share. Colours are weighted with their coverage: what lies outside the outline
// has no colour that could bleed in. A pixel belongs to the new outline when at least half of it is covered.

namespace voxtrel::agent::stage {
namespace {

constexpr int kChannels = 4; // red, green, blue, each times the coverage; coverage

struct Tap {
    int first = 0;
    std::vector<float> weights;
};

// Catmull-Rom: sharp, and exact where a pixel falls on a pixel.
float Cubic(float x)
{
    x = std::abs(x);
    if (x < 1)
        return (1.5F * x - 2.5F) * x * x + 1;
    if (x < 2)
        return ((-0.5F * x + 2.5F) * x - 4) * x + 2;
    return 0;
}

std::vector<Tap> TapsFor(int from, int to)
{
    const float ratio = static_cast<float>(from) / static_cast<float>(to);
    const float widening = std::max(1.0F, ratio);
    const float radius = 2 * widening;

    std::vector<Tap> taps(to);
    for (int i = 0; i < to; ++i) {
        const float center = (static_cast<float>(i) + 0.5F) * ratio - 0.5F;
        const int first = std::max(0, static_cast<int>(std::ceil(center - radius)));
        const int last = std::min(from - 1, static_cast<int>(std::floor(center + radius)));
        float sum = 0;
        taps[i].first = first;
        for (int source = first; source <= last; ++source) {
            taps[i].weights.push_back(Cubic((static_cast<float>(source) - center) / widening));
            sum += taps[i].weights.back();
        }
        for (float& weight : taps[i].weights)
            weight /= sum;
    }
    return taps;
}

// One pass along x; the result lies on its side, so that the same pass serves both directions.
std::vector<float> FilterRows(const std::vector<float>& pixels, Size size, const std::vector<Tap>& taps)
{
    std::vector<float> filtered(taps.size() * size.height * kChannels);
    for (int y = 0; y < size.height; ++y) {
        const float* row = &pixels[static_cast<std::size_t>(y) * size.width * kChannels];
        for (std::size_t x = 0; x < taps.size(); ++x) {
            float* out = &filtered[(x * size.height + y) * kChannels];
            const float* in = row + static_cast<std::size_t>(taps[x].first) * kChannels;
            for (const float weight : taps[x].weights) {
                for (int channel = 0; channel < kChannels; ++channel)
                    out[channel] += weight * *in++;
            }
        }
    }
    return filtered;
}

std::vector<float> WeightedColors(const Picture& picture)
{
    std::vector<float> pixels(picture.mask.size() * kChannels);
    for (std::size_t i = 0; i < picture.mask.size(); ++i) {
        if (picture.mask[i] == 0)
            continue;
        for (int channel = 0; channel < 3; ++channel)
            pixels[i * kChannels + channel] = picture.colors[i * 3 + channel];
        pixels[i * kChannels + 3] = 1;
    }
    return pixels;
}

} // namespace

Picture Scale(const Picture& picture, Size size)
{
    if (picture.size == size)
        return picture;

    const std::vector<float> across =
        FilterRows(WeightedColors(picture), picture.size, TapsFor(picture.size.width, size.width));
    const std::vector<float> scaled =
        FilterRows(across, {picture.size.height, size.width}, TapsFor(picture.size.height, size.height));

    Picture result{size, {}, {}};
    result.mask.resize(static_cast<std::size_t>(size.width) * size.height);
    result.colors.resize(result.mask.size() * 3);
    for (std::size_t i = 0; i < result.mask.size(); ++i) {
        const float coverage = scaled[i * kChannels + 3];
        if (coverage < 0.5F)
            continue;
        result.mask[i] = 255;
        for (int channel = 0; channel < 3; ++channel) {
            const float value = scaled[i * kChannels + channel] / coverage;
            result.colors[i * 3 + channel] =
                static_cast<std::uint8_t>(std::clamp(value + 0.5F, 0.0F, 255.0F));
        }
    }
    return result;
}

RowRange RowsInUse(const Picture& picture)
{
    const auto used = [](std::uint8_t covered) { return covered != 0; };
    const auto first = std::find_if(picture.mask.begin(), picture.mask.end(), used);
    if (first == picture.mask.end())
        return {};
    const auto last = std::find_if(picture.mask.rbegin(), picture.mask.rend(), used);
    return {static_cast<int>((first - picture.mask.begin()) / picture.size.width),
            static_cast<int>((picture.mask.rend() - last - 1) / picture.size.width) + 1};
}

} // namespace voxtrel::agent::stage
