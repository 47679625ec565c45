#pragma once

#include "agent/acs/character_file.h"

#include <cstdint>
#include <vector>

namespace voxtrel::agent::acs {

// The bytes of an .acs 2.0 file that holds the character. Images are compressed where that makes them
// smaller.
std::vector<std::uint8_t> WriteCharacterFile(const CharacterFile& character);

} // namespace voxtrel::agent::acs
