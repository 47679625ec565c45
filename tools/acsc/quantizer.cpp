// From full colour to one palette.
//
// The colours of all pictures are gathered (close ones together, if there are very many), split again and
// again where they spread the most until there is a group for each place of the palette, and the groups are
// then moved to where they fit best (k-means), all in a space in which distances are as the eye sees them. A
// group that is mostly one exact colour takes that colour, so flat areas stay as they were drawn.

#include "tools/acsc/quantizer.h"

#include "agent/acs/static_palette.h"
#include "tools/acsc/color_space.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace voxtrel::acsc {

namespace {

using agent::acs::Color;

constexpr std::size_t kMostSamples = 30000;
constexpr int kMostRounds = 25;
// Large areas count more than small ones, but an eye must not lose its colour to a belly.
constexpr double kWeightOfArea = 0.6;

struct Sample {
    PerceivedColor color;
    double weight = 0;
    std::uint64_t count = 0; // of pixels
    std::uint32_t exact = 0; // the commonest of the colours gathered here
    std::uint64_t exactCount = 0;
};

struct Group {
    std::size_t begin = 0, end = 0; // samples
    double spread = 0;              // weighted variance along the axis where it is the largest
    float PerceivedColor::*axis = &PerceivedColor::lightness;
    double mean = 0;
};

std::uint32_t Pack(const Rgba& pixel)
{
    return (std::uint32_t{pixel.red} << 16) | (std::uint32_t{pixel.green} << 8) | pixel.blue;
}

Color Unpack(std::uint32_t rgb)
{
    return {static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>((rgb >> 8) & 0xFF),
            static_cast<std::uint8_t>(rgb & 0xFF)};
}

// Close colours together in one sample. Sorted by colour, so that the outcome is the same on every run.
std::vector<Sample> Gather(const std::unordered_map<std::uint32_t, std::uint64_t>& counts)
{
    std::map<std::uint32_t, Sample> gathered;
    for (const std::uint32_t mask : {0xFFFFFFu, 0xFEFEFEu, 0xFCFCFCu, 0xF8F8F8u}) {
        gathered.clear();
        for (const auto& [rgb, count] : counts) {
            Sample& sample = gathered[rgb & mask];
            if (count > sample.exactCount || (count == sample.exactCount && rgb < sample.exact)) {
                sample.exact = rgb;
                sample.exactCount = count;
            }
            sample.count += count;
        }
        if (gathered.size() <= kMostSamples)
            break;
    }
    std::vector<Sample> samples;
    for (auto& [key, sample] : gathered) {
        sample.color = Perceive(sample.exact);
        sample.weight = std::pow(static_cast<double>(sample.count), kWeightOfArea);
        samples.push_back(sample);
    }
    return samples;
}

void Measure(Group& group, const std::vector<Sample>& samples)
{
    group.spread = -1;
    for (const auto axis : {&PerceivedColor::lightness, &PerceivedColor::a, &PerceivedColor::b}) {
        double weight = 0, sum = 0, squares = 0;
        for (std::size_t i = group.begin; i < group.end; ++i) {
            const double value = samples[i].color.*axis;
            weight += samples[i].weight;
            sum += samples[i].weight * value;
            squares += samples[i].weight * value * value;
        }
        const double spread = squares - sum * sum / weight;
        if (spread > group.spread) {
            group.spread = spread;
            group.axis = axis;
            group.mean = sum / weight;
        }
    }
    if (group.end - group.begin < 2)
        group.spread = 0;
}

struct Gathering {
    double weight = 0, lightness = 0, a = 0, b = 0;

    void Add(const Sample& sample)
    {
        weight += sample.weight;
        lightness += sample.weight * sample.color.lightness;
        a += sample.weight * sample.color.a;
        b += sample.weight * sample.color.b;
    }

    PerceivedColor Centre() const
    {
        return {static_cast<float>(lightness / weight), static_cast<float>(a / weight),
                static_cast<float>(b / weight)};
    }
};

// Up to kOwnColors groups, by halving the one that spreads the most.
std::vector<PerceivedColor> SplitIntoGroups(std::vector<Sample>& samples)
{
    std::vector<Group> groups{{0, samples.size()}};
    Measure(groups.front(), samples);
    while (groups.size() < kOwnColors) {
        auto widest = std::max_element(groups.begin(), groups.end(),
                                       [](const Group& a, const Group& b) { return a.spread < b.spread; });
        if (widest->spread <= 0)
            break;
        const auto begin = samples.begin() + static_cast<std::ptrdiff_t>(widest->begin);
        const auto end = samples.begin() + static_cast<std::ptrdiff_t>(widest->end);
        const auto axis = widest->axis;
        const double mean = widest->mean;
        const auto middle = std::stable_partition(
            begin, end, [&](const Sample& sample) { return sample.color.*axis < mean; });
        if (middle == begin || middle == end) {
            widest->spread = 0; // too close together to be told apart
            continue;
        }
        Group upper{static_cast<std::size_t>(middle - samples.begin()), widest->end};
        widest->end = upper.begin;
        Measure(*widest, samples);
        Measure(upper, samples);
        groups.push_back(upper);
    }
    std::vector<PerceivedColor> centres;
    for (const Group& group : groups) {
        Gathering gathering;
        for (std::size_t i = group.begin; i < group.end; ++i)
            gathering.Add(samples[i]);
        centres.push_back(gathering.Centre());
    }
    return centres;
}

std::size_t NearestCentre(const std::vector<PerceivedColor>& centres, const PerceivedColor& color)
{
    std::size_t nearest = 0;
    float least = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < centres.size(); ++i) {
        const float distance = SquaredDistance(centres[i], color);
        if (distance < least) {
            least = distance;
            nearest = i;
        }
    }
    return nearest;
}

// Moves the centres until no sample changes its group any more; gives the group of each sample.
std::vector<std::size_t> Settle(const std::vector<Sample>& samples, std::vector<PerceivedColor>& centres)
{
    std::vector<std::size_t> groupOf(samples.size(), centres.size());
    for (int round = 0; round < kMostRounds; ++round) {
        bool changed = false;
        std::vector<Gathering> gatherings(centres.size());
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const std::size_t nearest = NearestCentre(centres, samples[i].color);
            changed = changed || nearest != groupOf[i];
            groupOf[i] = nearest;
            gatherings[nearest].Add(samples[i]);
        }
        if (!changed)
            break;
        for (std::size_t i = 0; i < centres.size(); ++i) {
            if (gatherings[i].weight > 0)
                centres[i] = gatherings[i].Centre();
        }
    }
    return groupOf;
}

std::vector<std::uint32_t> ColorsOfGroups(const std::vector<Sample>& samples,
                                          const std::vector<std::size_t>& groupOf,
                                          const std::vector<PerceivedColor>& centres)
{
    std::vector<std::uint64_t> pixels(centres.size(), 0);
    std::vector<const Sample*> commonest(centres.size(), nullptr);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::size_t group = groupOf[i];
        pixels[group] += samples[i].count;
        if (!commonest[group] || samples[i].count > commonest[group]->count)
            commonest[group] = &samples[i];
    }
    std::vector<std::uint32_t> colors;
    for (std::size_t i = 0; i < centres.size(); ++i) {
        if (!commonest[i])
            continue;
        const bool mostlyOne = 2 * commonest[i]->count >= pixels[i];
        colors.push_back(mostlyOne ? commonest[i]->exact : Unperceive(centres[i]));
    }
    std::sort(colors.begin(), colors.end());
    colors.erase(std::unique(colors.begin(), colors.end()), colors.end());
    return colors;
}

} // namespace

void ColorCount::Add(const Pixels& pixels)
{
    for (const Rgba& pixel : pixels.data) {
        if (pixel.alpha != 0)
            ++counts_[Pack(pixel)];
    }
}

std::array<Color, 256> MakePalette(const ColorCount& colors)
{
    std::array<Color, 256> palette = agent::acs::StaticPalette();
    palette[kTransparentIndex] = {255, 0, 255};
    std::vector<Sample> samples = Gather(colors.Counts());
    std::vector<std::uint32_t> own;
    if (samples.size() <= kOwnColors) {
        for (const Sample& sample : samples)
            own.push_back(sample.exact);
    } else {
        std::vector<PerceivedColor> centres = SplitIntoGroups(samples);
        const std::vector<std::size_t> groupOf = Settle(samples, centres);
        own = ColorsOfGroups(samples, groupOf, centres);
    }
    for (std::size_t i = 0; i < own.size(); ++i)
        palette[kTransparentIndex + 1 + i] = Unpack(own[i]);
    return palette;
}

PaletteMapper::PaletteMapper(const std::array<Color, 256>& palette) : palette_{}
{
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette_[i] = Perceive(Pack({palette[i].red, palette[i].green, palette[i].blue, 255}));
}

agent::acs::Image PaletteMapper::Map(const Pixels& pixels)
{
    agent::acs::Image image{pixels.width, pixels.height, {}};
    image.pixels.reserve(pixels.data.size());
    for (const Rgba& pixel : pixels.data)
        image.pixels.push_back(pixel.alpha == 0 ? kTransparentIndex : Nearest(Pack(pixel)));
    return image;
}

std::uint8_t PaletteMapper::Nearest(std::uint32_t rgb)
{
    const auto found = known_.find(rgb);
    if (found != known_.end())
        return found->second;
    const PerceivedColor color = Perceive(rgb);
    std::size_t nearest = 0;
    float least = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < palette_.size(); ++i) {
        if (i == kTransparentIndex)
            continue;
        const float distance = SquaredDistance(palette_[i], color);
        if (distance < least) {
            least = distance;
            nearest = i;
        }
    }
    return known_[rgb] = static_cast<std::uint8_t>(nearest);
}

} // namespace voxtrel::acsc
