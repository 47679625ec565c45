#pragma once

#include "agent/acs/byte_cursor.h"
#include "agent/acs/character_file.h"

#include <cstdint>
#include <optional>
#include <span>

namespace voxtrel::agent::acs {

// The two numbers at the front of the description: the version of the layout.
struct FormatVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
};
std::optional<FormatVersion> ReadFormatVersion(std::span<const std::uint8_t> file, const Locator& block);

// Everything that the description of a character holds: identity, voice, balloon, palette and states. Nothing
// when the block makes no sense.
std::optional<CharacterFile> ReadCharacterInfo(std::span<const std::uint8_t> file, const Locator& block);

} // namespace voxtrel::agent::acs
