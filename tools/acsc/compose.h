#pragma once

#include "agent/acs/character_file.h"
#include "tools/acsc/pixels.h"

#include <optional>
#include <string_view>

namespace voxtrel::acsc {

// The picture of a frame as it is shown, with one of its mouths if one is wanted and there.
Pixels ComposeFrame(const agent::acs::CharacterFile& character, const agent::acs::Frame& frame,
                    std::optional<agent::acs::Mouth> mouth = std::nullopt);

// Names are compared without regard to case; null when there is none of that name.
const agent::acs::Animation* FindAnimation(const agent::acs::CharacterFile& character,
                                           std::wstring_view name);
const agent::acs::State* FindState(const agent::acs::CharacterFile& character, std::wstring_view name);

// Neither pictures nor time: such a frame is never shown.
bool IsUnseen(const agent::acs::Frame& frame);

const char* MouthName(agent::acs::Mouth mouth);

} // namespace voxtrel::acsc
