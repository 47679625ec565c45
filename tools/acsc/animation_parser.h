#pragma once

#include "tools/acsc/character_source.h"
#include "tools/acsc/pose_parser.h"

namespace voxtrel::acsc {

// Reads "animation NAME { ... }" and adds the animation to source, whose parts and mouth sets are known;
// files of sounds are added as they are met.
void ParseAnimation(const Statement& statement, const PoseTable& poses, CharacterSource& source);

} // namespace voxtrel::acsc
