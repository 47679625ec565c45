#pragma once

#include <cstdint>

namespace voxtrel::textreader {

// The place of a spoken word.
struct WordMark {
    std::int32_t position = 0; // of its first character, 1-based; 0 for no word
    std::int32_t length = 0;   // in characters
};

// A bookmark number carries position and length in one: position + 100000 * length.
inline constexpr std::int32_t kLengthFactor = 100000;

inline constexpr std::int32_t kEndOfSection = 999999999;
inline constexpr std::int32_t kEndOfText = 88888888; // the window is to be closed

// Always positive and never one of the two reserved numbers. A position from 100000 on, or a length that
// would pass 32 bits, does not survive the packing.
std::int32_t PackWordMark(WordMark mark);

// The length is rounded to the nearest whole number, halves to the even one: it is exact while the position
// is below 50000 and one too large from there on.
WordMark UnpackWordMark(std::int32_t number);

// The box position after the word, at which reading goes on: position + number / 100000, rounded in the same
// way.
std::int32_t ResumePoint(std::int32_t number);

} // namespace voxtrel::textreader
