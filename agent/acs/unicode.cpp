#include "agent/acs/unicode.h"

#include <cstddef>

namespace voxtrel::agent::acs {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// Takes one character off the front of UTF-16 or UTF-32 text.
template <typename Char> char32_t TakeCharacter(std::basic_string_view<Char>& text)
{
    // wchar_t may be signed.
    const auto at = [&](std::size_t i) { return static_cast<char32_t>(text[i]); };
    const char32_t first = at(0);
    if (IsHighSurrogate(first) && text.size() > 1 && IsLowSurrogate(at(1))) {
        const char32_t second = at(1);
        text.remove_prefix(2);
        return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
    }
    text.remove_prefix(1);
    if (IsHighSurrogate(first) || IsLowSurrogate(first) || first > 0x10FFFF)
        return kReplacement;
    return first;
}

template <typename Char> void Append(std::basic_string<Char>& text, char32_t c)
{
    if (sizeof(Char) == 2 && c > 0xFFFF) {
        text += static_cast<Char>(0xD800 + ((c - 0x10000) >> 10));
        text += static_cast<Char>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
        text += static_cast<Char>(c);
    }
}

template <typename To, typename From> std::basic_string<To> Convert(std::basic_string_view<From> text)
{
    std::basic_string<To> converted;
    converted.reserve(text.size());
    while (!text.empty())
        Append(converted, TakeCharacter(text));
    return converted;
}

void AppendUtf8(std::string& text, char32_t c)
{
    if (c < 0x80) {
        text += static_cast<char>(c);
        return;
    }
    const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    constexpr char32_t kFirstByte[] = {0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(kFirstByte[more] | (c >> (6 * more)));
    for (int i = more - 1; i >= 0; --i)
        text += static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3F));
}

char32_t TakeUtf8Character(std::string_view& text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t more = first < 0x80 ? 0 : first < 0xC2 ? 4 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    if (more == 0) {
        text.remove_prefix(1);
        return first;
    }
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    char32_t c = first & (0x3F >> more);
    bool proper = more < 4 && more < text.size();
    for (std::size_t i = 1; proper && i <= more; ++i) {
        proper = (byte(i) & 0xC0) == 0x80;
        c = (c << 6) | (byte(i) & 0x3F);
    }
    proper = proper && c >= kSmallest[more] && c <= 0x10FFFF && !IsHighSurrogate(c) && !IsLowSurrogate(c);
    text.remove_prefix(proper ? more + 1 : 1);
    return proper ? c : kReplacement;
}

} // namespace

std::wstring WideFromUtf16(std::u16string_view text) { return Convert<wchar_t>(text); }

std::u16string Utf16FromWide(std::wstring_view text) { return Convert<char16_t>(text); }

std::wstring WideFromUtf8(std::string_view text)
{
    std::wstring wide;
    while (!text.empty())
        Append(wide, TakeUtf8Character(text));
    return wide;
}

std::string Utf8FromWide(std::wstring_view text)
{
    std::string utf8;
    while (!text.empty())
        AppendUtf8(utf8, TakeCharacter(text));
    return utf8;
}

std::filesystem::path PathFromWide(std::wstring_view path)
{
    // Not from the wide text itself: some libraries convert that by the locale, which may know no more than
    // ASCII.
    const std::string utf8 = Utf8FromWide(path);
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

} // namespace voxtrel::agent::acs
