#pragma once

#include <cstdint>

namespace voxtrel::textreader {

// Colours as numbers: red in the low byte, blue in the third.

// How well two colours stand apart, 1 to 21, as accessibility guidelines compute it.
double Contrast(std::int32_t one, std::int32_t other);

// The colour itself when it is readable on the background; else the nearest one on its way to black or white
// that is.
std::int32_t ReadableOn(std::int32_t background, std::int32_t color);

} // namespace voxtrel::textreader
