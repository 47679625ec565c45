#pragma once

#include "settings/shared_settings.h"
#include "speech/pronunciation_list.h"

#include <string>

namespace voxtrel::speech {

// Appends the markup for text to shared.PendingSpeech; the next tick of hotkeytimer speaks it. Leaves " x" at
// the end of the caller's text, which must not be PendingSpeech itself.
void BuildSpeechText(std::wstring& text, settings::SharedSettings& shared,
                     const PronunciationList& pronunciations);

// Whether the code point is a letter to the markup: in lower case from a to z, from a-grave to o-diaeresis or
// from o-slash to y-diaeresis, or the apostrophe.
bool IsLetter(char32_t codePoint);

} // namespace voxtrel::speech
