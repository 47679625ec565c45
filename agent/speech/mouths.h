#pragma once

#include "agent/acs/character_file.h"

#include <string_view>

namespace voxtrel::agent::speech {

// The mouth of a phoneme by its ARPAbet-like name in lower case; closed for silence.
acs::Mouth MouthOf(std::string_view phoneme);

} // namespace voxtrel::agent::speech
