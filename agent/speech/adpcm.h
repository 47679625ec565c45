#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

// The two ways in which the sounds of characters are usually packed: four bits a sample, in blocks that each
// begin anew.
namespace voxtrel::agent::speech {

struct AdpcmFormat {
    int channels = 1;          // 1 or 2
    std::size_t blockSize = 0; // bytes
    // Of the predictors that a block may choose from, each in 256ths; for the Microsoft kind only.
    std::vector<std::pair<int, int>> coefficients = {};
};

// The samples, channels side by side, at most mostFrames of each channel. A block that is cut short gives
// what there is of it; one that is damaged ends the sound.
std::vector<std::int16_t> DecodeMicrosoftAdpcm(std::span<const std::uint8_t> data, const AdpcmFormat& format,
                                               std::size_t mostFrames);
std::vector<std::int16_t> DecodeImaAdpcm(std::span<const std::uint8_t> data, const AdpcmFormat& format,
                                         std::size_t mostFrames);

} // namespace voxtrel::agent::speech
