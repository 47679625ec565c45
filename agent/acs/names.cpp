#include "agent/acs/names.h"

#include <algorithm>

namespace voxtrel::agent::acs {

namespace {

wchar_t Upper(wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c; }

} // namespace

std::wstring UpperCase(std::wstring_view name)
{
    std::wstring upper(name);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

bool SameName(std::wstring_view left, std::wstring_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return Upper(a) == Upper(b); });
}

} // namespace voxtrel::agent::acs
