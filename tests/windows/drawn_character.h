#pragma once

#include "agent/acs/character_file.h"

namespace voxtrel::agent {

// A round face of 128 x 128 pixels, drawn by code: it rises when it appears, speaks with seven mouths, looks
// up for attention and blinks.
acs::CharacterFile DrawCharacter();

} // namespace voxtrel::agent
