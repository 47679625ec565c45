#pragma once

#include "agent/acs/character_file.h"

#include <string>
#include <string_view>

namespace voxtrel::acsc {

struct SheetOptions {
    std::wstring_view animation; // empty for all
    double scale = 1;
};

// Draws the frames of a character side by side, with their numbers, durations and mouths, as a PNG file.
// Gives what went wrong, or nothing.
std::string DrawSheet(const agent::acs::CharacterFile& character, const SheetOptions& options,
                      const std::string& path);

} // namespace voxtrel::acsc
