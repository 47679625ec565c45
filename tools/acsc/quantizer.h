#pragma once

#include "agent/acs/character_file.h"
#include "tools/acsc/color_space.h"
#include "tools/acsc/pixels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace voxtrel::acsc {

constexpr std::uint8_t kTransparentIndex = 10;
constexpr std::size_t kOwnColors = 235;

// Counts how often each opaque colour occurs in pictures that share a palette.
class ColorCount {
public:
    void Add(const Pixels& pixels);
    const std::unordered_map<std::uint32_t, std::uint64_t>& Counts() const { return counts_; } // 0xRRGGBB

private:
    std::unordered_map<std::uint32_t, std::uint64_t> counts_;
};

// A palette for these colours: the static ones in their places, a transparent one, and up to 235 own ones,
// chosen so that the eye sees the least difference. Colours that are few enough stay exactly as they are.
std::array<agent::acs::Color, 256> MakePalette(const ColorCount& colors);

// Turns pictures into palette indexes, each pixel to the colour next to it for the eye, without dithering.
class PaletteMapper {
public:
    explicit PaletteMapper(const std::array<agent::acs::Color, 256>& palette);

    agent::acs::Image Map(const Pixels& pixels);

private:
    std::uint8_t Nearest(std::uint32_t rgb);

    std::array<PerceivedColor, 256> palette_;
    std::unordered_map<std::uint32_t, std::uint8_t> known_;
};

} // namespace voxtrel::acsc
