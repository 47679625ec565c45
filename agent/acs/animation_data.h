#pragma once

#include "agent/acs/character_file.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace voxtrel::agent::acs {

// How much there is for the indexes in an animation to point at.
struct IndexLimits {
    std::size_t images = 0;
    std::size_t sounds = 0;
};

// Reads the frames of an animation from its block. Indexes that lead nowhere are left out with what they
// belong to: an image, a mouth, a branch, an exit, a sound. When the block itself cannot be read the
// animation has no frames and is marked as damaged.
Animation ReadAnimation(std::span<const std::uint8_t> block, const IndexLimits& limits);

} // namespace voxtrel::agent::acs
