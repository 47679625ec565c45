#pragma once

#include "agent/acs/character_file.h"

#include <string>

namespace voxtrel::acsc {

// One line: "31 animations, 412 frames, 233 images, 198 colours".
std::string Summary(const agent::acs::CharacterFile& character);

// Everything that a character holds, as text for a person.
std::string Description(const agent::acs::CharacterFile& character);

} // namespace voxtrel::acsc
