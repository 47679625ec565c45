#include "settings/number_conversions.h"

#include "settings/text_case.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace voxtrel::settings {

namespace {

bool IsSkipped(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\n'; }
bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// The text as a row of ASCII characters without what is skipped; '\0' stands for the end and for anything
// that no number holds.
class NumberReader {
public:
    explicit NumberReader(std::wstring_view text) : text_(text) { SkipBlanks(); }

    char Peek() const
    {
        if (position_ >= text_.size() || static_cast<char32_t>(text_[position_]) >= 0x80)
            return '\0';
        return static_cast<char>(text_[position_]);
    }

    char Take()
    {
        const char taken = Peek();
        if (position_ < text_.size())
            ++position_;
        SkipBlanks();
        return taken;
    }

    bool TakeIf(char upper, char lower)
    {
        if (Peek() != upper && Peek() != lower)
            return false;
        Take();
        return true;
    }

private:
    void SkipBlanks()
    {
        while (position_ < text_.size() && IsSkipped(text_[position_]))
            ++position_;
    }

    std::wstring_view text_;
    std::size_t position_ = 0;
};

int DigitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return std::numeric_limits<int>::max();
}

// What follows &H or &O.
double ReadRadixNumber(NumberReader& reader, int radix)
{
    double value = 0;
    while (DigitValue(reader.Peek()) < radix) {
        value = value * radix + DigitValue(reader.Take());
        if (!std::isfinite(value))
            return std::numeric_limits<double>::max();
    }
    const bool isLong = reader.Peek() == '&';
    if (value <= 0xFFFF && !isLong)
        return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
    if (value <= 0xFFFFFFFF)
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    return value;
}

// A decimal number as std::from_chars takes it, and the power of ten of its first digit that is not 0.
struct DecimalText {
    std::string characters;
    bool anyDigit = false;
    bool zero = true;
    long long magnitude = 0;
};

void ReadDigits(NumberReader& reader, DecimalText& number)
{
    bool seenPoint = false;
    while (IsDigit(static_cast<wchar_t>(reader.Peek())) || (reader.Peek() == '.' && !seenPoint)) {
        const char c = reader.Take();
        number.characters += c;
        if (c == '.') {
            seenPoint = true;
            continue;
        }
        number.anyDigit = true;
        if (number.zero && c != '0')
            number.zero = false;
        else if (number.zero)
            number.magnitude -= seenPoint ? 1 : 0;
        if (!number.zero && !seenPoint)
            ++number.magnitude;
    }
}

// An exponent counts only with at least one digit; a letter alone ends the number.
void ReadExponent(NumberReader reader, DecimalText& number)
{
    if (!reader.TakeIf('E', 'e') && !reader.TakeIf('D', 'd'))
        return;
    std::string exponent = "e";
    const bool negative = reader.Peek() == '-';
    if (negative || reader.Peek() == '+')
        exponent += reader.Take();
    if (!IsDigit(static_cast<wchar_t>(reader.Peek())))
        return;
    constexpr long long kFarBeyondAnyDouble = 1'000'000'000'000;
    long long power = 0;
    while (IsDigit(static_cast<wchar_t>(reader.Peek()))) {
        const char digit = reader.Take();
        exponent += digit;
        power = std::min(power * 10 + (digit - '0'), kFarBeyondAnyDouble);
    }
    if (exponent[1] == '+')
        exponent.erase(1, 1);
    number.characters += exponent;
    number.magnitude += negative ? -power : power;
}

double ToDouble(const DecimalText& number)
{
    double value = 0;
    const char* const begin = number.characters.data();
    const auto read = std::from_chars(begin, begin + number.characters.size(), value);
    if (read.ec == std::errc::result_out_of_range)
        return number.magnitude > 0 ? std::numeric_limits<double>::max() : 0;
    return value;
}

double RoundHalfToEven(double value)
{
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest != 0.5)
        return rest < 0.5 ? below : below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <typename Integer> Integer RoundTo(double value)
{
    const double rounded = RoundHalfToEven(value);
    if (rounded <= std::numeric_limits<Integer>::min())
        return std::numeric_limits<Integer>::min();
    if (rounded >= std::numeric_limits<Integer>::max())
        return std::numeric_limits<Integer>::max();
    return static_cast<Integer>(rounded);
}

} // namespace

double Val(std::wstring_view text)
{
    NumberReader reader(text);
    if (reader.TakeIf('&', '&')) {
        if (reader.TakeIf('H', 'h'))
            return ReadRadixNumber(reader, 16);
        return reader.TakeIf('O', 'o') ? ReadRadixNumber(reader, 8) : 0;
    }
    const bool negative = reader.Peek() == '-';
    if (negative || reader.Peek() == '+')
        reader.Take();
    DecimalText number;
    ReadDigits(reader, number);
    if (!number.anyDigit || number.zero)
        return 0;
    ReadExponent(reader, number);
    return negative ? -ToDouble(number) : ToDouble(number);
}

std::int16_t ToInt16(std::wstring_view text) { return RoundTo<std::int16_t>(Val(text)); }

std::int32_t ToInt32(std::wstring_view text) { return RoundTo<std::int32_t>(Val(text)); }

std::int32_t RoundToInt32(double value) { return RoundTo<std::int32_t>(value); }

bool ToBoolean(std::wstring_view text)
{
    if (SameName(text, L"True"))
        return true;
    if (SameName(text, L"False"))
        return false;
    return Val(text) != 0;
}

std::wstring FormatNumber(double value)
{
    if (value == 0)
        return L"0";
    std::array<char, 1100> digits{}; // the longest double written out has 1079 characters
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return {digits.data(), written.ptr};
}

std::wstring FormatBoolean(bool value) { return value ? L"True" : L"False"; }

} // namespace voxtrel::settings
