#pragma once

#include "tools/acsc/character_source.h"

#include <map>
#include <string>
#include <vector>

namespace voxtrel::acsc {

// All poses that have been read, by name.
using PoseTable = std::map<std::string, PoseSettings>;

// Reads the lines "part NAME ..." and "joint NAME ..." among the statements and sets the parents.
std::vector<Part> ParseParts(const std::vector<Statement>& statements);

// "pose NAME [from A [+ B ...]] [empty] { ... }", added to poses.
void ParsePose(const Statement& statement, const std::vector<Part>& parts, PoseTable& poses);

// "mouths NAME { MOUTH PART SETTINGS ... }"
MouthSet ParseMouthSet(const Statement& statement, const std::vector<Part>& parts);

// The pose that the next word names.
const PoseSettings& FindPose(WordReader& words, const PoseTable& poses);

// The index of the part that the next word names.
int FindPart(WordReader& words, const std::vector<Part>& parts);

} // namespace voxtrel::acsc
