#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Text as code points. A std::wstring is UTF-32 on one platform and UTF-16 on the other; what is counted,
// compared or folded is a code point on both. A torn surrogate counts as a code point of its own and is never
// dropped.
namespace voxtrel::settings {

struct CodePoint {
    char32_t value = 0;
    std::size_t length = 0; // in elements of the text: 2 for a surrogate pair, else 1
};

// The code point that starts at position, which must be inside the text.
inline CodePoint CodePointAt(std::wstring_view text, std::size_t position)
{
    const auto first = static_cast<char32_t>(text[position]);
    if constexpr (sizeof(wchar_t) == 2) {
        if (first >= 0xD800 && first < 0xDC00 && position + 1 < text.size()) {
            const auto second = static_cast<char32_t>(text[position + 1]);
            if (second >= 0xDC00 && second < 0xE000)
                return {0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00), 2};
        }
    }
    return {first, 1};
}

// Anything that is no code point (beyond U+10FFFF) becomes U+FFFD.
void AppendCodePoint(std::wstring& text, char32_t codePoint);

char32_t SimpleLowerBeyondLatin1(char32_t codePoint);

// Unicode's simple lower case: one code point gives one code point, in no locale.
constexpr char32_t SimpleLower(char32_t codePoint)
{
    if (codePoint < 0x100) {
        const bool capital = (codePoint >= U'A' && codePoint <= U'Z') ||
                             (codePoint >= 0xC0 && codePoint <= 0xDE && codePoint != 0xD7);
        return capital ? codePoint + 0x20 : codePoint;
    }
    return SimpleLowerBeyondLatin1(codePoint);
}

std::wstring SimpleLower(std::wstring_view text);

// The text with its first letter in upper case. A letter stays whose upper case is another letter's, too: the name
// of a setting is the same name afterwards.
std::wstring WithCapital(std::wstring_view text);

// Whether two names of the store are the same name: equal but for capitals.
bool SameName(std::wstring_view left, std::wstring_view right);

// Hash and equality for containers keyed by such names; both take views, so that a lookup allocates nothing.
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view name) const;
};

struct NameEqual {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const { return SameName(left, right); }
};

// What cannot be written as UTF-8 (a torn surrogate) becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

// Bytes that are no UTF-8 become U+FFFD, one for each.
std::wstring FromUtf8(std::string_view bytes);

// Where the first byte stands that is no UTF-8; npos when all of it is.
std::size_t FindInvalidUtf8(std::string_view bytes);

} // namespace voxtrel::settings
