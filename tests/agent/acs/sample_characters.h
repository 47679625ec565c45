#pragma once

#include "agent/acs/character_file.h"

#include <cstdint>
#include <vector>

// Characters for tests to write and read back.
namespace voxtrel::agent::acs::samples {

enum class Voice { Absent, Present };
enum class Balloon { Absent, Present };

// A few pictures of a few pixels, one animation that speaks, one with branches.
CharacterFile Small(Voice voice = Voice::Present, Balloon balloon = Balloon::Present);

// A character made of random parts; the same seed makes the same character.
CharacterFile Random(std::uint32_t seed);

// All images of a character, unpacked.
std::vector<Image> Images(const CharacterFile& character);

// All its sounds.
std::vector<std::vector<std::uint8_t>> Sounds(const CharacterFile& character);

} // namespace voxtrel::agent::acs::samples
