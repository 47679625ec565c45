#include "tools/acsc/png_file.h"

#include <png.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <vector>

namespace voxtrel::acsc {

namespace {

using agent::acs::Color;
using agent::acs::Image;

constexpr png_uint_32 kLargestSide = 4096;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// The library is built with unwinding tables: an exception passes through it.
[[noreturn]] void Complain(png_structp, png_const_charp message) { throw std::runtime_error(message); }
void Ignore(png_structp, png_const_charp) {}

class Writer {
public:
    Writer() : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Complain, Ignore))
    {
        info_ = png_create_info_struct(png_);
    }
    ~Writer() { png_destroy_write_struct(&png_, &info_); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void Write(std::FILE* file, const Image& image, const std::array<Color, 256>& palette,
               std::uint8_t transparent)
    {
        png_init_io(png_, file);
        png_set_IHDR(png_, info_, static_cast<png_uint_32>(image.width),
                     static_cast<png_uint_32>(image.height), 8, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        std::array<png_color, 256> colors{};
        for (std::size_t i = 0; i < colors.size(); ++i)
            colors.at(i) = {palette.at(i).red, palette.at(i).green, palette.at(i).blue};
        png_set_PLTE(png_, info_, colors.data(), static_cast<int>(colors.size()));
        std::vector<png_byte> opacity(std::size_t{transparent} + 1, 255);
        opacity.back() = 0;
        png_set_tRNS(png_, info_, opacity.data(), static_cast<int>(opacity.size()), nullptr);
        png_write_info(png_, info_);
        for (int y = 0; y < image.height; ++y)
            png_write_row(png_, image.pixels.data() + static_cast<std::ptrdiff_t>(y) * image.width);
        png_write_end(png_, info_);
    }

private:
    png_structp png_;
    png_infop info_ = nullptr;
};

class Reader {
public:
    Reader() : png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, Complain, Ignore))
    {
        info_ = png_create_info_struct(png_);
    }
    ~Reader() { png_destroy_read_struct(&png_, &info_, nullptr); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    Image Read(std::FILE* file)
    {
        png_set_user_limits(png_, kLargestSide, kLargestSide);
        png_init_io(png_, file);
        png_read_info(png_, info_);
        if (png_get_color_type(png_, info_) != PNG_COLOR_TYPE_PALETTE)
            throw std::runtime_error("the picture has no palette; save it with the palette that it had");
        png_set_packing(png_); // one byte for each pixel
        const int passes = png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
        Image image;
        image.width = static_cast<int>(png_get_image_width(png_, info_));
        image.height = static_cast<int>(png_get_image_height(png_, info_));
        image.pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
        for (int pass = 0; pass < passes; ++pass) {
            for (int y = 0; y < image.height; ++y)
                png_read_row(png_, image.pixels.data() + static_cast<std::ptrdiff_t>(y) * image.width,
                             nullptr);
        }
        return image;
    }

private:
    png_structp png_;
    png_infop info_ = nullptr;
};

} // namespace

bool WriteIndexedPng(const std::filesystem::path& path, const Image& image,
                     const std::array<Color, 256>& palette, std::uint8_t transparentIndex)
{
    File file(std::fopen(path.c_str(), "wb"));
    if (!file)
        return false;
    try {
        Writer().Write(file.get(), image, palette, transparentIndex);
    } catch (const std::runtime_error&) {
        return false;
    }
    return std::fclose(file.release()) == 0;
}

std::variant<Image, std::string> ReadIndexedPng(const std::filesystem::path& path)
{
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return "the picture cannot be read";
    try {
        return Reader().Read(file.get());
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

} // namespace voxtrel::acsc
