#include "textreader/bookmark.h"

namespace voxtrel::textreader {

namespace {

constexpr std::int32_t kMaxLength = 21473; // times 100000, with a position below 100000, stays within 32 bits

// What the number 0, which no word has, is written as.
constexpr std::int32_t kInsteadOfZero = 10001;

// whole + part / 100000, rounded; a half goes to the even neighbour.
std::int32_t Rounded(std::int32_t whole, std::int32_t part)
{
    const std::int32_t twice = 2 * part;
    const bool up = twice > kLengthFactor || (twice == kLengthFactor && whole % 2 != 0);
    return up ? whole + 1 : whole;
}

} // namespace

std::int32_t PackWordMark(WordMark mark)
{
    std::int64_t number = mark.position + std::int64_t{kLengthFactor} * mark.length;
    if (number > INT32_MAX)
        number = mark.position % kLengthFactor + std::int64_t{kLengthFactor} * kMaxLength;
    // At these positions a length one lower is read back as the same length: so the reserved numbers stay
    // reserved.
    if (number == kEndOfSection || number == kEndOfText)
        number -= kLengthFactor;
    return number == 0 ? kInsteadOfZero : static_cast<std::int32_t>(number);
}

WordMark UnpackWordMark(std::int32_t number)
{
    if (number <= 0)
        return {};
    return {number % kLengthFactor, Rounded(number / kLengthFactor, number % kLengthFactor)};
}

std::int32_t ResumePoint(std::int32_t number)
{
    if (number <= 0)
        return 0;
    const std::int32_t position = number % kLengthFactor;
    return Rounded(number / kLengthFactor + position, position);
}

} // namespace voxtrel::textreader
