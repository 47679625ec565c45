#pragma once

#include "agent/acs/character_file.h"
#include "agent/acs/names.h"

#include <string_view>
#include <vector>

namespace voxtrel::agent::stage {

using acs::SameName;

// The animation of that name, or null.
const acs::Animation* FindAnimation(const acs::CharacterFile& file, std::wstring_view name);

// Whether it can be played at all: its block was read and it has frames.
bool Playable(const acs::Animation& animation);

// The playable animations of a state, in the file's order; names that no animation carries are left out.
std::vector<const acs::Animation*> AnimationsOfState(const acs::CharacterFile& file, std::wstring_view state);

} // namespace voxtrel::agent::stage
