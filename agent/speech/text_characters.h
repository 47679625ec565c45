#pragma once

#include <cstddef>
#include <string_view>

// What the speech parts ask of a single character. Text is UTF-32 or UTF-16, as wide characters are.
namespace voxtrel::agent::speech {

constexpr bool IsAsciiLetter(char32_t c) { return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z'); }
constexpr bool IsAsciiDigit(char32_t c) { return c >= U'0' && c <= U'9'; }
constexpr char32_t LowerAscii(char32_t c) { return c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c; }

constexpr bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// Whether a cut between the two would tear a character apart.
constexpr bool SplitsPair(wchar_t before, wchar_t after)
{
    return sizeof(wchar_t) == 2 && IsHighSurrogate(static_cast<char32_t>(before)) &&
           IsLowSurrogate(static_cast<char32_t>(after));
}

constexpr bool IsLineBreak(char32_t c)
{
    return c == U'\n' || c == U'\r' || c == 0x85 || c == 0x2028 || c == 0x2029;
}

constexpr bool IsWhiteSpace(char32_t c)
{
    return c == U' ' || c == U'\t' || c == U'\v' || c == U'\f' || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200B) || c == 0x202F || c == 0x205F || c == 0x3000 || IsLineBreak(c);
}

struct CodePoint {
    char32_t value = 0;
    std::size_t length = 0; // in wide characters
};

// The character at index, which must lie inside the text. A surrogate without its other half is one character
// of its own.
constexpr CodePoint CodePointAt(std::wstring_view text, std::size_t index)
{
    const auto first = static_cast<char32_t>(text[index]);
    if (sizeof(wchar_t) == 2 && index + 1 < text.size() && SplitsPair(text[index], text[index + 1])) {
        const auto second = static_cast<char32_t>(text[index + 1]);
        return {0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00), 2};
    }
    return {first, 1};
}

} // namespace voxtrel::agent::speech
