#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Icons as Windows keeps them in programs.
namespace voxtrel::svgico {

struct IconImage {
    int pixels = 0;                // width and height, 1 to 256
    std::vector<std::uint8_t> png; // the image as a whole PNG file
};

// The bytes of an icon file that holds the images in this order.
std::vector<std::uint8_t> MakeIconFile(const std::vector<IconImage>& images);

} // namespace voxtrel::svgico
