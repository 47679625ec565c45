#pragma once

#include "agent/acs/character_file.h"

#include <string>
#include <vector>

namespace voxtrel::acsc {

struct Finding {
    enum class Weight { Warning, Error } weight = Weight::Warning;
    std::string text;
};

// What of a character is against the rules that make it play well.
std::vector<Finding> CheckCharacter(const agent::acs::CharacterFile& character);

} // namespace voxtrel::acsc
