#include "platform/windows/registry_names.h"

#include "settings/text_case.h"

#include <cstdint>

namespace voxtrel::platform {

namespace {

constexpr std::size_t kLongestKeyName = 255;
constexpr std::size_t kLongestValueName = 16383;
constexpr std::size_t kKeptOfLongName = 100;
constexpr std::wstring_view kHashMark = L"%~";
constexpr wchar_t kHexDigits[] = L"0123456789ABCDEF";

// Characters that the system's table and the settings' rule fold alike, and that every kind of name may hold.
bool IsPlain(char32_t c)
{
    if (c < 0x80)
        return c >= 0x20 && c < 0x7F && c != U'%' && c != U'\\';
    const bool letter = c >= 0xC0 && c < 0xFF && c != 0xD7 && c != 0xDF && c != 0xF7;
    return letter;
}

void AppendHex(std::wstring& text, std::uint64_t number, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += kHexDigits[(number >> shift) & 0xF];
}

std::wstring Escaped(std::wstring_view name)
{
    std::wstring escaped;
    escaped.reserve(name.size());
    for (const wchar_t c : name) {
        if (IsPlain(c)) {
            escaped += c;
        } else {
            escaped += L'%';
            AppendHex(escaped, c, 4);
        }
    }
    return escaped;
}

std::wstring Hashed(std::wstring_view name)
{
    std::wstring hashed = Escaped(settings::SimpleLower(name)).substr(0, kKeptOfLongName);
    hashed += kHashMark;
    AppendHex(hashed, settings::NameHash()(name), 16);
    return hashed;
}

int HexValue(wchar_t c)
{
    const std::size_t value = std::wstring_view(kHexDigits).find(c);
    return value == std::wstring_view::npos ? -1 : static_cast<int>(value);
}

// The number after a percent sign; -1 when it is none of ours.
int EscapedNumber(std::wstring_view digits)
{
    if (digits.size() < 4)
        return -1;
    int number = 0;
    for (const wchar_t digit : digits.substr(0, 4)) {
        if (HexValue(digit) < 0)
            return -1;
        number = number * 16 + HexValue(digit);
    }
    return number;
}

} // namespace

// An empty name is no key in the registry.
std::wstring RegistryKeyName(std::wstring_view name)
{
    if (name.empty())
        return std::wstring(kHashMark);
    std::wstring folded;
    for (std::size_t i = 0; i < name.size();) {
        const settings::CodePoint next = settings::CodePointAt(name, i);
        settings::AppendCodePoint(folded,
                                  IsPlain(next.value) ? next.value : settings::SimpleLower(next.value));
        i += next.length;
    }
    std::wstring keyName = Escaped(folded);
    return keyName.size() <= kLongestKeyName ? keyName : Hashed(name);
}

std::wstring RegistryValueName(std::wstring_view key)
{
    std::wstring valueName = Escaped(key);
    return valueName.size() <= kLongestValueName ? valueName : std::wstring();
}

std::wstring HashedRegistryValueName(std::wstring_view key) { return Hashed(key); }

bool IsHashedRegistryValueName(std::wstring_view valueName)
{
    return valueName.size() <= kKeptOfLongName + kHashMark.size() + 16 &&
           valueName.find(kHashMark) != std::wstring_view::npos;
}

std::wstring KeyOfRegistryValue(std::wstring_view valueName)
{
    std::wstring key;
    for (std::size_t i = 0; i < valueName.size(); ++i) {
        const int number = valueName[i] == L'%' ? EscapedNumber(valueName.substr(i + 1)) : -1;
        if (number < 0) {
            key += valueName[i];
        } else {
            key += static_cast<wchar_t>(number);
            i += 4;
        }
    }
    return key;
}

} // namespace voxtrel::platform
