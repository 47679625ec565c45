#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

// Settings are texts. These are the ways from a text to a number or a flag and back; none fails, and none
// depends on the user's locale.
namespace voxtrel::settings {

// The leading numeric value of a text, 0 when it does not begin with a number. Blanks, tabs and line feeds
// are skipped wherever they stand; then a sign, digits with at most one point, and an exponent after E or D
// count. &H and &O begin a hexadecimal or octal number: up to &HFFFF the bits of a signed 16-bit number
// (unless an & closes it), up to &HFFFFFFFF those of a signed 32-bit number. What is beyond a double is the
// largest double.
double Val(std::wstring_view text);

// The same, as a whole number: halves go to the even neighbour, what is out of range to the nearest limit.
std::int16_t ToInt16(std::wstring_view text);
std::int32_t ToInt32(std::wstring_view text);
std::int32_t RoundToInt32(double value);

// "True" and "False" under any capitalisation; else whether the leading numeric value is not 0.
bool ToBoolean(std::wstring_view text);

// Plain decimal: no grouping, no exponent, a full stop for the point, and no more digits than are needed.
template <std::integral Number> std::wstring FormatNumber(Number value) { return std::to_wstring(value); }
std::wstring FormatNumber(double value);

// "True" or "False".
std::wstring FormatBoolean(bool value);

} // namespace voxtrel::settings
