// Draws an SVG in the sizes that Windows wants of an icon.
//
//   svgico DRAWING.svg ICON.ico

#include "tools/svgico/icon_file.h"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <cstdio>
#include <fstream>
#include <memory>

namespace {

using voxtrel::svgico::IconImage;

constexpr int kSizes[] = {16, 20, 24, 32, 40, 48, 64, 256}; // pixels

struct Deleter {
    void operator()(RsvgHandle* drawing) const { g_object_unref(drawing); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(GError* error) const { g_error_free(error); }
};

cairo_status_t Append(void* png, const unsigned char* bytes, unsigned length)
{
    auto* file = static_cast<std::vector<std::uint8_t>*>(png);
    file->insert(file->end(), bytes, bytes + length);
    return CAIRO_STATUS_SUCCESS;
}

// Without any bytes when the drawing cannot be drawn.
IconImage Draw(RsvgHandle* drawing, int pixels)
{
    const std::unique_ptr<cairo_surface_t, Deleter> surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels, pixels));
    const std::unique_ptr<cairo_t, Deleter> cairo(cairo_create(surface.get()));
    const RsvgRectangle whole{0, 0, static_cast<double>(pixels), static_cast<double>(pixels)};
    IconImage image{pixels, {}};
    if (rsvg_handle_render_document(drawing, cairo.get(), &whole, nullptr))
        cairo_surface_write_to_png_stream(surface.get(), Append, &image.png);
    return image;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: svgico DRAWING.svg ICON.ico\n", stderr);
        return 2;
    }
    GError* failure = nullptr;
    const std::unique_ptr<RsvgHandle, Deleter> drawing(rsvg_handle_new_from_file(argv[1], &failure));
    const std::unique_ptr<GError, Deleter> error(failure);
    if (!drawing) {
        std::fprintf(stderr, "svgico: %s: %s\n", argv[1], error->message);
        return 1;
    }
    std::vector<IconImage> images;
    for (const int pixels : kSizes)
        images.push_back(Draw(drawing.get(), pixels));
    const std::vector<std::uint8_t> icon = voxtrel::svgico::MakeIconFile(images);
    std::ofstream file(argv[2], std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(icon.data()), static_cast<std::streamsize>(icon.size()));
    file.close();
    if (!file || images.front().png.empty()) {
        std::fprintf(stderr, "svgico: %s cannot be made\n", argv[2]);
        return 1;
    }
    return 0;
}
