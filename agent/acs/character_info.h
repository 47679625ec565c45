#pragma once

#include "agent/acs/byte_cursor.h"
#include "agent/acs/character_file.h"
#include "agent/acs/file_source.h"

#include <cstdint>
#include <optional>
#include <span>

namespace voxtrel::agent::acs {

// The two numbers at the front of the description: the version of the layout.
struct FormatVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
};
std::optional<FormatVersion> ReadFormatVersion(std::span<const std::uint8_t> block);

// Everything that the description of a character holds: identity, voice, balloon, palette and states. block
// are the bytes at place. Nothing when they make no sense.
std::optional<CharacterFile> ReadCharacterInfo(const FileSource& file, const Locator& place,
                                               std::span<const std::uint8_t> block);

} // namespace voxtrel::agent::acs
