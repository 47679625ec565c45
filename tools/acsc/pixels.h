#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace voxtrel::acsc {

struct Rgba {
    std::uint8_t red = 0, green = 0, blue = 0, alpha = 0;
    friend bool operator==(const Rgba&, const Rgba&) = default;
};

// Full-colour pixels, rows from the top; not premultiplied.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<Rgba> data;

    Pixels() = default;
    Pixels(int w, int h)
        : width(w), height(h), data(static_cast<std::size_t>(w) * static_cast<std::size_t>(h))
    {
    }

    bool Contains(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }
    Rgba& At(int x, int y) { return data[Index(x, y)]; }
    const Rgba& At(int x, int y) const { return data[Index(x, y)]; }

private:
    std::size_t Index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
};

// Half open: right and bottom are the first column and row outside.
struct Box {
    int left = 0, top = 0, right = 0, bottom = 0;

    bool Empty() const { return right <= left || bottom <= top; }
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    void Include(int x, int y);
    void Include(const Box& other);
};

// The smallest box around the pixels that are not transparent.
Box ContentBox(const Pixels& pixels);

// The smallest box around the pixels in which two pictures of one size differ.
Box DifferenceBox(const Pixels& a, const Pixels& b);

Pixels Crop(const Pixels& pixels, const Box& box);

// Makes every pixel opaque or fully transparent, removes specks of one or two pixels, and closes holes of
// one.
void HardenOutline(Pixels& pixels);

} // namespace voxtrel::acsc
