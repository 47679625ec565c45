#include "agent/speech/plain_text.h"

#include "agent/acs/unicode.h"
#include "agent/speech/text_characters.h"

#include <algorithm>

namespace voxtrel::agent::speech {

namespace {

constexpr std::size_t kShortWord = 3; // letters; abbreviations are hardly longer
constexpr std::size_t kMostSigns = 2; // more of them are a line or a pattern

bool IsClosing(char32_t c)
{
    return c == U'"' || c == U'\'' || c == U')' || c == U']' || c == U'}' || c == U'*' || c == U'_' ||
           c == 0xAB || c == 0xBB || c == 0x2019 || c == 0x201C || c == 0x201D || c == 0x300D || c == 0xFF09;
}

bool IsDash(char32_t c) { return c == U'-' || (c >= 0x2010 && c <= 0x2015); }

Break BreakAfter(char32_t c)
{
    switch (c) {
    case U'.':
    case U'!':
    case U'?':
    case 0x2026: // ellipsis
    case 0x037E: // Greek question mark
    case 0x0589: // Armenian
    case 0x061F: // Arabic
    case 0x06D4:
    case 0x0964: // Devanagari
    case 0x0965:
    case 0x3002: // Chinese and Japanese
    case 0xFF01:
    case 0xFF1F:
        return Break::Sentence;
    case U';':
    case U':':
    case 0x061B:
    case 0xFF1A:
    case 0xFF1B:
        return Break::Semicolon;
    case U',':
    case 0x060C:
    case 0x3001:
    case 0xFF0C:
        return Break::Comma;
    default:
        return Break::None;
    }
}

// Letters and digits of any script, and other signs with a name of their own.
bool IsWordCharacter(char32_t c)
{
    if (c < 0x80)
        return IsAsciiLetter(c) || IsAsciiDigit(c);
    if (c < 0xC0)
        return c == 0xAA || c == 0xB2 || c == 0xB3 || c == 0xB5 || (c >= 0xB9 && c <= 0xBE && c != 0xBB);
    return !(c >= 0x2000 && c <= 0x206F) && !(c >= 0x3000 && c <= 0x303F) && !(c >= 0xFE00 && c <= 0xFE0F) &&
           BreakAfter(c) == Break::None;
}

// Signs that are said when they stand alone: = + & % and currencies.
bool IsSayableSign(char32_t c)
{
    return std::u32string_view(U"=+&%$#@<>/\u00A3\u00A5\u00A7\u00B0\u00B1\u00D7\u00F7").find(c) !=
           std::u32string_view::npos;
}

// "z.B.", "Nr.", "bzw." and "3." rarely end a sentence, and an engine that sees what follows knows.
bool MayBeAbbreviation(std::u32string_view word)
{
    if (word.size() < 2)
        return false;
    const std::size_t dot = word.rfind(U'.', word.size() - 2);
    const bool dotted = dot != std::u32string_view::npos;
    const std::u32string_view last =
        word.substr(dotted ? dot + 1 : 0, word.size() - 1 - (dotted ? dot + 1 : 0));
    if (last.size() < kShortWord || std::all_of(last.begin(), last.end(), IsAsciiDigit))
        return true;
    if (last.size() > kShortWord)
        return false;
    const bool hasVowel = last.find_first_of(U"aeiouyAEIOUY") != std::u32string_view::npos || last[0] >= 0x80;
    const bool capital = last[0] >= U'A' && last[0] <= U'Z';
    return dotted || capital || !hasVowel;
}

Break EndingOf(std::u32string_view word)
{
    const auto end = std::find_if_not(word.rbegin(), word.rend(), IsClosing).base();
    const std::u32string_view bare(word.begin(), end);
    if (bare.empty())
        return Break::None;
    const Break ending = BreakAfter(bare.back());
    if (bare.back() == U'.' && bare.size() == word.size() && MayBeAbbreviation(bare))
        return Break::None;
    return ending;
}

} // namespace

bool EndsPhraseWithoutBlank(char32_t c)
{
    return c == 0x3001 || c == 0x3002 || c == 0xFF01 || c == 0xFF0C || c == 0xFF1A || c == 0xFF1B ||
           c == 0xFF1F;
}

NormalizedRun KeepRun(std::wstring_view run)
{
    std::wstring kept;
    std::u32string word;
    for (std::size_t i = 0; i < run.size();) {
        const CodePoint point = CodePointAt(run, i);
        const bool text = point.value >= 0x20 && !(point.value >= 0x7F && point.value < 0xA0) &&
                          !IsHighSurrogate(point.value) && !IsLowSurrogate(point.value) &&
                          point.value <= 0x10FFFF;
        if (text) {
            kept += run.substr(i, point.length);
            word += point.value;
        }
        i += point.length;
    }
    NormalizedRun result;
    result.ending = EndingOf(word);
    const bool sayable = std::any_of(word.begin(), word.end(), IsWordCharacter) ||
                         (word.size() <= kMostSigns && std::any_of(word.begin(), word.end(), IsSayableSign));
    if (sayable)
        result.tokens.push_back({.name = acs::Utf8FromWide(kept)});
    else if (!word.empty() && std::all_of(word.begin(), word.end(), IsDash))
        result.ending = Break::Comma;
    return result;
}

} // namespace voxtrel::agent::speech
