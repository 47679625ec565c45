#pragma once

namespace voxtrel::agent::stage {

// Screen pixels, from the top-left corner of the primary monitor.
struct Point {
    int x = 0;
    int y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    int width = 0;
    int height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int Right() const { return x + width; }
    int Bottom() const { return y + height; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace voxtrel::agent::stage
