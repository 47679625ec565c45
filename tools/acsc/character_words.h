#pragma once

#include "agent/acs/character_file.h"
#include "tools/acsc/statement.h"

// Words that mean the same in a source and in the description of a character taken apart.
namespace voxtrel::acsc {

// #FFFBF0.
agent::acs::Color ColorOf(WordReader& words);

// Takes a word about the balloon's colours and habits, with what belongs to it. False when it is another
// word.
bool AcceptBalloonWord(WordReader& words, agent::acs::BalloonInfo& balloon);

} // namespace voxtrel::acsc
