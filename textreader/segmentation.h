#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Where words, sentences and paragraphs begin and end. Scan positions are 1-based, box positions 0-based: a
// scan position just before a section is therefore the box position of its first character.
namespace voxtrel::textreader {

struct Section {
    std::int32_t scanStart = 0; // just before the section; 0 when it begins the text
    std::int32_t scanEnd = 0;   // of the character that ends it; one less when it begins the text
    std::int32_t startpos = 0;  // box position, as read
    std::int32_t strlength = 0; // in characters, as read; may reach one or two past the end of the text
    std::int32_t lastRead = 0;  // scan position of the last character that belongs to it
};

// Each of these gives nothing for an empty text. selStart is the caret, a box position.

// oldScanStart is that of the section before: only then does a caret on a line break move over it.
std::optional<Section> CurrentSentence(std::wstring_view text, std::int32_t selStart,
                                       std::int32_t oldScanStart);
std::optional<Section> CurrentParagraph(std::wstring_view text, std::int32_t selStart);
std::optional<Section> CurrentWord(std::wstring_view text, std::int32_t selStart);

// The paragraph after the section; the last one again when there is none.
std::optional<Section> NextParagraph(std::wstring_view text, std::int32_t startpos, std::int32_t strlength);

// The paragraph of the character before the caret.
std::optional<Section> PreviousParagraph(std::wstring_view text, std::int32_t selStart);

// The sentence or word that follows the scan position lastRead (0: the first of the text). Nothing when only
// blanks, or for words only delimiters, follow.
std::optional<Section> NextSentence(std::wstring_view text, std::int32_t lastRead);
std::optional<Section> NextWord(std::wstring_view text, std::int32_t lastRead);

// The sentence or word that ends before the box position startpos, as the walk forward finds it; the first of
// the text when there is none.
std::optional<Section> PreviousSentence(std::wstring_view text, std::int32_t startpos);
std::optional<Section> PreviousWord(std::wstring_view text, std::int32_t startpos);

} // namespace voxtrel::textreader
