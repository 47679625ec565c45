#pragma once

#include "settings/shared_settings.h"
#include "speech/pronunciation_list.h"

#include <string>
#include <string_view>

namespace voxtrel::screenreading {

// The words of a text as they are to be said, each word and each separator set off by blanks. A word or
// separator with a pronunciation is said that way; a carriage return becomes a pause.
std::wstring SpokenWords(std::wstring_view text, const speech::PronunciationList& pronunciations);

// The markup that says the words in the user's voice while the balloon shows nothing.
std::wstring ScreenMarkup(std::wstring_view words, const settings::SharedSettings& shared);

} // namespace voxtrel::screenreading
