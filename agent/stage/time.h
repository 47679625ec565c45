#pragma once

#include <chrono>

namespace voxtrel::agent::stage {

// A moment, counted from an arbitrary start by a clock that never goes back.
using Time = std::chrono::milliseconds;

inline constexpr Time kNever = Time::max();

} // namespace voxtrel::agent::stage
