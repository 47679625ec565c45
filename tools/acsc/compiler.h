#pragma once

#include "agent/acs/character_file.h"
#include "tools/acsc/character_source.h"

#include <filesystem>
#include <string>
#include <variant>

namespace voxtrel::acsc {

struct CompileError {
    std::string message; // with file and line in front: "genie/character.txt:41: ..."
};

// Makes a character from the folder that holds its character.txt.
std::variant<agent::acs::CharacterFile, CompileError> CompileCharacter(const std::filesystem::path& folder);

} // namespace voxtrel::acsc
