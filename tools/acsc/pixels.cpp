#include "tools/acsc/pixels.h"

#include <algorithm>
#include <array>
#include <utility>

namespace voxtrel::acsc {

namespace {

constexpr std::uint8_t kOpaqueFrom = 128;
constexpr std::size_t kLargestSpeck = 2; // pixels

using Place = std::pair<int, int>;

template <typename Wanted> Box BoxAround(int width, int height, Wanted wanted)
{
    Box box;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (wanted(x, y))
                box.Include(x, y);
        }
    }
    return box;
}

// The opaque pixels that hang together with the one at start, corners included.
std::vector<Place> Island(const Pixels& pixels, std::vector<bool>& seen, Place start)
{
    const auto index = [&](int x, int y) {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels.width) +
               static_cast<std::size_t>(x);
    };
    std::vector<Place> island{start};
    seen[index(start.first, start.second)] = true;
    for (std::size_t i = 0; i < island.size(); ++i) {
        const auto [x, y] = island[i];
        for (int ny = y - 1; ny <= y + 1; ++ny) {
            for (int nx = x - 1; nx <= x + 1; ++nx) {
                if (!pixels.Contains(nx, ny) || pixels.At(nx, ny).alpha == 0 || seen[index(nx, ny)])
                    continue;
                seen[index(nx, ny)] = true;
                island.emplace_back(nx, ny);
            }
        }
    }
    return island;
}

void RemoveSpecks(Pixels& pixels)
{
    std::vector<bool> seen(pixels.data.size(), false);
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            const auto at = static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels.width) +
                            static_cast<std::size_t>(x);
            if (pixels.At(x, y).alpha == 0 || seen[at])
                continue;
            const std::vector<Place> island = Island(pixels, seen, {x, y});
            if (island.size() > kLargestSpeck)
                continue;
            for (const auto& [px, py] : island)
                pixels.At(px, py) = {};
        }
    }
}

void CloseHoles(Pixels& pixels)
{
    for (int y = 1; y + 1 < pixels.height; ++y) {
        for (int x = 1; x + 1 < pixels.width; ++x) {
            if (pixels.At(x, y).alpha != 0)
                continue;
            const std::array<Rgba, 4> around{pixels.At(x - 1, y), pixels.At(x + 1, y), pixels.At(x, y - 1),
                                             pixels.At(x, y + 1)};
            if (std::any_of(around.begin(), around.end(), [](const Rgba& p) { return p.alpha == 0; }))
                continue;
            int red = 2, green = 2, blue = 2;
            for (const Rgba& p : around) {
                red += p.red;
                green += p.green;
                blue += p.blue;
            }
            pixels.At(x, y) = {static_cast<std::uint8_t>(red / 4), static_cast<std::uint8_t>(green / 4),
                               static_cast<std::uint8_t>(blue / 4), 255};
        }
    }
}

} // namespace

void Box::Include(int x, int y) { Include(Box{x, y, x + 1, y + 1}); }

void Box::Include(const Box& other)
{
    if (other.Empty())
        return;
    if (Empty()) {
        *this = other;
        return;
    }
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
}

Box ContentBox(const Pixels& pixels)
{
    return BoxAround(pixels.width, pixels.height, [&](int x, int y) { return pixels.At(x, y).alpha != 0; });
}

Box DifferenceBox(const Pixels& a, const Pixels& b)
{
    return BoxAround(a.width, a.height, [&](int x, int y) { return a.At(x, y) != b.At(x, y); });
}

Pixels Crop(const Pixels& pixels, const Box& box)
{
    Pixels cropped(box.Width(), box.Height());
    for (int y = 0; y < cropped.height; ++y) {
        for (int x = 0; x < cropped.width; ++x)
            cropped.At(x, y) = pixels.At(box.left + x, box.top + y);
    }
    return cropped;
}

void HardenOutline(Pixels& pixels)
{
    for (Rgba& pixel : pixels.data) {
        if (pixel.alpha < kOpaqueFrom)
            pixel = {};
        else
            pixel.alpha = 255;
    }
    RemoveSpecks(pixels);
    CloseHoles(pixels);
}

} // namespace voxtrel::acsc
