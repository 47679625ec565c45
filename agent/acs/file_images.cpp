#include "agent/acs/file_images.h"

#include "agent/acs/byte_cursor.h"
#include "agent/acs/compression.h"
#include "agent/acs/format.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace voxtrel::agent::acs {

namespace {

constexpr std::size_t kPackedMargin = 64; // bytes around the packed pixels

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

// Where the pixels of an image lie, and how.
struct StoredImage {
    int width = 0;
    int height = 0;
    bool compressed = false;
    std::uint32_t size = 0; // bytes stored
};

constexpr std::uint32_t kImageHeadSize = 10;

std::optional<StoredImage> ReadImageHead(const FileSource& file, const Locator& place)
{
    if (place.size < kImageHeadSize)
        return std::nullopt;
    const auto head = file.Read({place.offset, kImageHeadSize});
    if (!head)
        return std::nullopt;
    ByteCursor cursor(*head);
    cursor.U8();
    StoredImage image;
    image.width = cursor.U16();
    image.height = cursor.U16();
    image.compressed = cursor.Bool();
    image.size = cursor.U32();
    const bool sound = image.width > 0 && image.height > 0 && image.width <= kLargestImageSide &&
                       image.height <= kLargestImageSide && image.size <= place.size - kImageHeadSize;
    return sound ? std::optional(image) : std::nullopt;
}

} // namespace

FileImages::FileImages(std::shared_ptr<const FileSource> file, std::vector<Locator> places)
    : file_(std::move(file)), places_(std::move(places))
{
}

Image FileImages::Decode(std::size_t index) const
{
    if (index >= places_.size())
        return {};
    const std::optional<StoredImage> head = ReadImageHead(*file_, places_[index]);
    if (!head)
        return {};
    const std::size_t size = RowStride(head->width) * static_cast<std::size_t>(head->height);
    // However badly an image is packed, nine bits are enough for each of its bytes.
    const std::size_t most = size + size / 8 + kPackedMargin;
    const auto stored = file_->Read({places_[index].offset + kImageHeadSize,
                                     static_cast<std::uint32_t>(std::min<std::size_t>(head->size, most))});
    if (!stored)
        return {};

    Image image{head->width, head->height, {}};
    if (head->compressed) {
        const auto rows = Decompress(*stored, size);
        if (!rows)
            return {};
        image.pixels = TopDownPixels(*rows, image.width, image.height);
    } else {
        if (stored->size() < size)
            return {};
        image.pixels = TopDownPixels(*stored, image.width, image.height);
    }
    return image;
}

FileWaves::FileWaves(std::shared_ptr<const FileSource> file, std::vector<Locator> places)
    : file_(std::move(file)), places_(std::move(places))
{
}

std::vector<std::uint8_t> FileWaves::Read(std::size_t index) const
{
    if (index >= places_.size())
        return {};
    return file_->Read(places_[index]).value_or(std::vector<std::uint8_t>{});
}

} // namespace voxtrel::agent::acs
