#pragma once

#include "settings/shared_settings.h"
#include "speech/pronunciation_table.h"
#include "textreader/bookmark.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::textreader {

inline constexpr std::wstring_view kEndOfSectionTag = L" \\Mrk=999999999\\ ";
inline constexpr std::wstring_view kEndOfTextTag = L" \\Mrk=88888888\\ ";

struct ReadingMarkup {
    std::wstring markup;         // what Speak takes; empty when the section has nothing to say
    std::vector<WordMark> words; // the word of each bookmark, in order
};

// The markup of a section of the text, given by box position and length: every word behind its bookmark, all
// of it hidden from the balloon, the user's prosody in front. What reaches past the end of the text is not
// read.
ReadingMarkup BuildReadingMarkup(std::wstring_view text, std::int32_t start, std::int32_t length,
                                 const settings::SharedSettings& shared,
                                 const speech::PronunciationTable& pronunciations);

} // namespace voxtrel::textreader
