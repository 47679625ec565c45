#include "agent/acs/names.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstddef>

namespace voxtrel::agent::acs {

namespace {

wchar_t Upper(wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c; }

// The code point at position, which moves behind it. A torn surrogate stands for itself.
utf8proc_int32_t NextCodePoint(std::wstring_view text, std::size_t& position)
{
    const auto unit = static_cast<utf8proc_int32_t>(text[position++]);
    if (sizeof(wchar_t) == 2 && unit >= 0xD800 && unit < 0xDC00 && position < text.size()) {
        const auto low = static_cast<utf8proc_int32_t>(text[position]);
        if (low >= 0xDC00 && low < 0xE000) {
            ++position;
            return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
    }
    return unit;
}

} // namespace

std::wstring UpperCase(std::wstring_view name)
{
    std::wstring upper(name);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

bool SameName(std::wstring_view left, std::wstring_view right)
{
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < left.size() && r < right.size()) {
        if (utf8proc_tolower(NextCodePoint(left, l)) != utf8proc_tolower(NextCodePoint(right, r)))
            return false;
    }
    return l == left.size() && r == right.size();
}

} // namespace voxtrel::agent::acs
