#pragma once

#include "agent/acs/character_file.h"

#include <array>
#include <cstddef>

namespace voxtrel::agent::acs {

constexpr std::size_t kStaticColorsAtEachEnd = 10;

// The 20 colours that every palette holds in its first and last ten entries, at their places; black between.
const std::array<Color, 256>& StaticPalette();

// True for the places 0..9 and 246..255.
constexpr bool IsStaticEntry(std::size_t index)
{
    return index < kStaticColorsAtEachEnd || (index >= 256 - kStaticColorsAtEachEnd && index < 256);
}

} // namespace voxtrel::agent::acs
