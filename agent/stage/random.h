#pragma once

#include <functional>

namespace voxtrel::agent::stage {

// A number in 0..bound-1, each as likely as the other; bound is at least 1.
using Random = std::function<int(int bound)>;

} // namespace voxtrel::agent::stage
