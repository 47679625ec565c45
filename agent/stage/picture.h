#pragma once

#include "agent/stage/geometry.h"

#include <cstdint>
#include <vector>

namespace voxtrel::agent::stage {

// A picture with a hard outline, rows from the top.
struct Picture {
    Size size;
    std::vector<std::uint8_t> colors; // red, green, blue of each pixel
    std::vector<std::uint8_t> mask;   // 255 where the picture is, 0 where one looks through
    friend bool operator==(const Picture&, const Picture&) = default;
};

// The rows that hold anything: first and one behind the last. Both 0 when the picture is empty.
struct RowRange {
    int first = 0;
    int end = 0;
};
RowRange RowsInUse(const Picture& picture);

} // namespace voxtrel::agent::stage
