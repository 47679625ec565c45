#pragma once

#include <cstdint>

namespace voxtrel::acsc {

// A colour in Oklab: equal distances look equally far apart.
struct PerceivedColor {
    float lightness = 0, a = 0, b = 0;
};

inline float SquaredDistance(const PerceivedColor& p, const PerceivedColor& q)
{
    const float l = p.lightness - q.lightness, a = p.a - q.a, b = p.b - q.b;
    return l * l + a * a + b * b;
}

// rgb is 0xRRGGBB.
PerceivedColor Perceive(std::uint32_t rgb);

// The nearest 0xRRGGBB.
std::uint32_t Unperceive(const PerceivedColor& color);

} // namespace voxtrel::acsc
