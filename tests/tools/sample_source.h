#pragma once

#include "tools/acsc/character_source.h"

#include <string>

// Sources of a small character for tests.
namespace voxtrel::acsc::samples {

// A complete character.txt up to its poses: a figure with a body, a head on it, a hidden star, the poses
// rest, left and right, and the mouth set talk. more is added at its end.
std::string Source(const std::string& more);

// The same, read.
CharacterSource Parsed(const std::string& more);

// "LINE: MESSAGE" of the mistake in a source, its line counted from the first line of more; empty when there
// is none.
std::string MistakeIn(const std::string& more);

} // namespace voxtrel::acsc::samples
