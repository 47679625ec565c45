#pragma once

#include "agent/speech/text_normalizer.h"

#include <string_view>

namespace voxtrel::agent::speech {

// The run as one token, as it is written: for engines that know how their languages are read. What cannot be
// text (control characters, halves of surrogate pairs) is left out; no token for mere ornament.
NormalizedRun KeepRun(std::wstring_view run);

// Whether the character ends a sentence or a part of it in a language that is written without blanks.
bool EndsPhraseWithoutBlank(char32_t c);

} // namespace voxtrel::agent::speech
