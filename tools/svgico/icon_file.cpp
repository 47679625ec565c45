#include "tools/svgico/icon_file.h"

namespace voxtrel::svgico {
namespace {

constexpr std::uint16_t kTypeIcon = 1;
constexpr std::uint16_t kPlanes = 1;
constexpr std::uint16_t kBitsPerPixel = 32;
constexpr std::size_t kHeaderSize = 6;
constexpr std::size_t kEntrySize = 16;

void Put(std::vector<std::uint8_t>& bytes, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

} // namespace

std::vector<std::uint8_t> MakeIconFile(const std::vector<IconImage>& images)
{
    std::vector<std::uint8_t> bytes;
    Put(bytes, 0, 2);
    Put(bytes, kTypeIcon, 2);
    Put(bytes, static_cast<std::uint32_t>(images.size()), 2);
    std::size_t offset = kHeaderSize + kEntrySize * images.size();
    for (const IconImage& image : images) {
        // 256 does not fit into the byte and is written as 0.
        Put(bytes, static_cast<std::uint32_t>(image.pixels), 1);
        Put(bytes, static_cast<std::uint32_t>(image.pixels), 1);
        Put(bytes, 0, 2); // no palette
        Put(bytes, kPlanes, 2);
        Put(bytes, kBitsPerPixel, 2);
        Put(bytes, static_cast<std::uint32_t>(image.png.size()), 4);
        Put(bytes, static_cast<std::uint32_t>(offset), 4);
        offset += image.png.size();
    }
    for (const IconImage& image : images)
        bytes.insert(bytes.end(), image.png.begin(), image.png.end());
    return bytes;
}

} // namespace voxtrel::svgico
