#pragma once

#include "agent/speech/prosody.h"

#include <string>
#include <string_view>

namespace voxtrel::agent::speech {

// Any text as the plain ASCII that reads the same: letters without accents, plain quotes and dashes, symbols
// as words between blanks. Control characters and halves of surrogate pairs vanish; what cannot be said
// (emoji, other scripts) leaves a blank.
std::string FoldToAscii(std::wstring_view text, ReadingContext context);

} // namespace voxtrel::agent::speech
