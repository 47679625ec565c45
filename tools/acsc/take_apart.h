#pragma once

#include "tools/acsc/compiler.h"

#include <filesystem>
#include <string>
#include <variant>

namespace voxtrel::acsc {

// Whether the folder holds a character that was taken apart.
bool IsTakenApart(const std::filesystem::path& folder);

// Writes a character into a folder: frames.txt, its images as PNG files, its sounds as WAV files. Gives what
// went wrong, or nothing.
std::string TakeApart(const agent::acs::CharacterFile& character, const std::filesystem::path& folder);

// The character that was taken apart into the folder.
std::variant<agent::acs::CharacterFile, CompileError> PutTogether(const std::filesystem::path& folder);

} // namespace voxtrel::acsc
