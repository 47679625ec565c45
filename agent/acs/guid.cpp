#include "agent/acs/guid.h"

#include <cstddef>

namespace voxtrel::agent::acs {

namespace {

// The byte shown at each place of the text; kDash for the dashes.
constexpr int kDash = -1;
constexpr std::array<int, 20> kTextOrder{3,     2, 1, 0,     kDash, 5,  4,  kDash, 7,  6,
                                         kDash, 8, 9, kDash, 10,    11, 12, 13,    14, 15};

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

} // namespace

std::string GuidText(const GuidBytes& bytes)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "{";
    for (const int place : kTextOrder) {
        if (place == kDash) {
            text += '-';
            continue;
        }
        const std::uint8_t byte = bytes[static_cast<std::size_t>(place)];
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    text += '}';
    return text;
}

std::optional<GuidBytes> ParseGuid(std::string_view text)
{
    if (text.size() == 38 && text.front() == '{' && text.back() == '}')
        text = text.substr(1, 36);
    if (text.size() != 36)
        return std::nullopt;
    GuidBytes bytes{};
    for (const int place : kTextOrder) {
        if (place == kDash) {
            if (text.front() != '-')
                return std::nullopt;
            text.remove_prefix(1);
            continue;
        }
        const int high = HexDigit(text[0]);
        const int low = HexDigit(text[1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes[static_cast<std::size_t>(place)] = static_cast<std::uint8_t>(high * 16 + low);
        text.remove_prefix(2);
    }
    return bytes;
}

} // namespace voxtrel::agent::acs
