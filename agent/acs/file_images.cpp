#include "agent/acs/file_images.h"

#include "agent/acs/compression.h"
#include "agent/acs/format.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace voxtrel::agent::acs {

namespace {

// Rows lie bottom-up in the file, each filled up to a multiple of four bytes.
std::vector<std::uint8_t> TopDownPixels(std::span<const std::uint8_t> rows, int width, int height)
{
    const std::size_t stride = RowStride(width);
    std::vector<std::uint8_t> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = height - 1; y >= 0; --y) {
        const auto row = rows.subspan(stride * static_cast<std::size_t>(y), static_cast<std::size_t>(width));
        pixels.insert(pixels.end(), row.begin(), row.end());
    }
    return pixels;
}

} // namespace

FileImages::FileImages(std::shared_ptr<const std::vector<std::uint8_t>> file, std::vector<Locator> places)
    : file_(std::move(file)), places_(std::move(places))
{
}

Image FileImages::Decode(std::size_t index) const
{
    if (index >= places_.size())
        return {};
    ByteCursor cursor(*file_, places_[index]);
    cursor.U8();
    Image image;
    image.width = cursor.U16();
    image.height = cursor.U16();
    const bool compressed = cursor.Bool();
    const std::span<const std::uint8_t> stored = cursor.Bytes(cursor.U32());
    if (!cursor.Ok() || image.width == 0 || image.height == 0 || image.width > kLargestImageSide ||
        image.height > kLargestImageSide)
        return {};

    const std::size_t size = RowStride(image.width) * static_cast<std::size_t>(image.height);
    if (compressed) {
        const auto rows = Decompress(stored, size);
        if (!rows)
            return {};
        image.pixels = TopDownPixels(*rows, image.width, image.height);
    } else {
        if (stored.size() < size)
            return {};
        image.pixels = TopDownPixels(stored, image.width, image.height);
    }
    return image;
}

} // namespace voxtrel::agent::acs
