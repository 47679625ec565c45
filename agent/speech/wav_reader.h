#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace voxtrel::agent::speech {

// The sound of a whole RIFF WAVE file as samples at kSampleRate, all channels in one, at most a minute of it.
// Takes plain samples of 8 and 16 bits, and Microsoft's and the IMA's ADPCM; empty for anything else and for damaged
// files.
std::vector<std::int16_t> ReadWav(std::span<const std::uint8_t> file);

} // namespace voxtrel::agent::speech
