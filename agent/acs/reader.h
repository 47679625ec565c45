#pragma once

#include "agent/acs/character_file.h"
#include "agent/result.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace voxtrel::agent::acs {

struct ReadOutcome {
    Result result;
    CharacterFile character; // meaningful when result is ok
};

// Reads the bytes of an .acs file, whatever they are: every offset, count and length is checked against them.
// Fails with NotACharacterFile, FileVersionUnsupported or DataInvalid.
ReadOutcome ReadCharacterFile(std::vector<std::uint8_t> bytes);

// The same from a file on disk; fails with FileNotFound too. Images and sounds are read when they are asked
// for: the file stays open as long as the character's sources live.
ReadOutcome LoadCharacterFile(std::wstring_view path);

} // namespace voxtrel::agent::acs
