#include "settings/text_case.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace voxtrel::settings {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsScalarValue(char32_t codePoint)
{
    return codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
}

// The number of bytes of the code point that starts at position; 0 when they are no UTF-8.
std::size_t DecodeUtf8(std::string_view bytes, std::size_t position, char32_t& codePoint)
{
    utf8proc_int32_t decoded = 0;
    const auto* start = reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()) + position;
    const auto available = static_cast<utf8proc_ssize_t>(bytes.size() - position);
    const utf8proc_ssize_t length = utf8proc_iterate(start, available, &decoded);
    if (length <= 0)
        return 0;
    codePoint = static_cast<char32_t>(decoded);
    return static_cast<std::size_t>(length);
}

// Most texts are ASCII for long stretches. The first position from here on that is not.
std::size_t EndOfAscii(std::string_view bytes, std::size_t position)
{
    for (std::uint64_t eight = 0; position + sizeof eight <= bytes.size(); position += sizeof eight) {
        std::memcpy(&eight, bytes.data() + position, sizeof eight);
        if ((eight & 0x8080808080808080U) != 0)
            break;
    }
    while (position < bytes.size() && static_cast<unsigned char>(bytes[position]) < 0x80)
        ++position;
    return position;
}

} // namespace

void AppendCodePoint(std::wstring& text, char32_t codePoint)
{
    if (codePoint > 0x10FFFF)
        codePoint = kReplacement;
    if constexpr (sizeof(wchar_t) == 2) {
        if (codePoint >= 0x10000) {
            text += static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10));
            text += static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
            return;
        }
    }
    text += static_cast<wchar_t>(codePoint);
}

char32_t SimpleLowerBeyondLatin1(char32_t codePoint)
{
    if (!IsScalarValue(codePoint))
        return codePoint;
    return static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(codePoint)));
}

std::wstring SimpleLower(std::wstring_view text)
{
    std::wstring lower;
    lower.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint next = CodePointAt(text, i);
        const char32_t folded = SimpleLower(next.value);
        if (folded == next.value)
            lower.append(text, i, next.length);
        else
            AppendCodePoint(lower, folded);
        i += next.length;
    }
    return lower;
}

std::wstring WithCapital(std::wstring_view text)
{
    if (text.empty())
        return {};
    const CodePoint first = CodePointAt(text, 0);
    if (!IsScalarValue(first.value))
        return std::wstring(text);
    const auto upper =
        static_cast<char32_t>(utf8proc_toupper(static_cast<utf8proc_int32_t>(first.value)));
    if (SimpleLower(upper) != SimpleLower(first.value))
        return std::wstring(text);
    std::wstring capital;
    AppendCodePoint(capital, upper);
    return capital.append(text.substr(first.length));
}

bool SameName(std::wstring_view left, std::wstring_view right)
{
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < left.size() && r < right.size()) {
        const CodePoint fromLeft = CodePointAt(left, l);
        const CodePoint fromRight = CodePointAt(right, r);
        if (fromLeft.value != fromRight.value && SimpleLower(fromLeft.value) != SimpleLower(fromRight.value))
            return false;
        l += fromLeft.length;
        r += fromRight.length;
    }
    return l == left.size() && r == right.size();
}

std::size_t NameHash::operator()(std::wstring_view name) const
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (std::size_t i = 0; i < name.size();) {
        const CodePoint next = CodePointAt(name, i);
        hash = (hash ^ SimpleLower(next.value)) * 0x100000001B3;
        i += next.length;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32));
}

std::string ToUtf8(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size() + text.size() / 8);
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint next = CodePointAt(text, i);
        const char32_t writable = IsScalarValue(next.value) ? next.value : kReplacement;
        utf8proc_uint8_t encoded[4];
        const utf8proc_ssize_t length =
            utf8proc_encode_char(static_cast<utf8proc_int32_t>(writable), encoded);
        bytes.append(reinterpret_cast<const char*>(encoded), static_cast<std::size_t>(length));
        i += next.length;
    }
    return bytes;
}

std::wstring FromUtf8(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        if (const std::size_t end = EndOfAscii(bytes, i); end > i) {
            const std::size_t before = text.size();
            text.resize(before + (end - i));
            std::copy(bytes.data() + i, bytes.data() + end, text.data() + before);
            i = end;
            continue;
        }
        char32_t codePoint = kReplacement;
        const std::size_t length = DecodeUtf8(bytes, i, codePoint);
        AppendCodePoint(text, codePoint);
        i += length > 0 ? length : 1;
    }
    return text;
}

std::size_t FindInvalidUtf8(std::string_view bytes)
{
    for (std::size_t i = EndOfAscii(bytes, 0); i < bytes.size(); i = EndOfAscii(bytes, i)) {
        char32_t codePoint = 0;
        const std::size_t length = DecodeUtf8(bytes, i, codePoint);
        if (length == 0)
            return i;
        i += length;
    }
    return std::string_view::npos;
}

} // namespace voxtrel::settings
