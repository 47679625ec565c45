// Drawing with librsvg and cairo.
//
// Each element is read from its drawing once and kept as a recording of strokes and fills, which is then
// played back turned, moved and scaled. A stance is drawn larger than the frame and averaged down.

#include "tools/acsc/renderer.h"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace voxtrel::acsc {

namespace {

constexpr int kSamplesToAUnit = 4; // in each direction, at least
constexpr int kLeastOversampling = 2;
constexpr double kNothing = 1e-6; // the share of its area below which a part is not drawn

template <auto Free> struct Deleter {
    template <typename T> void operator()(T* object) const { Free(object); }
};
using Surface = std::unique_ptr<cairo_surface_t, Deleter<cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Deleter<cairo_destroy>>;
using Handle = std::unique_ptr<RsvgHandle, Deleter<g_object_unref>>;
using Error = std::unique_ptr<GError, Deleter<g_error_free>>;

// Calls a function of librsvg that reports through a GError; gives its words, empty when all went well.
template <typename Call> std::string ErrorOf(Call call)
{
    GError* raw = nullptr;
    const bool ok = call(&raw);
    const Error error(raw);
    return ok ? std::string() : error ? std::string(error->message) : std::string("it cannot be read");
}

struct Drawing {
    std::string file;
    Handle handle;
};

Drawing Open(const std::filesystem::path& folder, const std::string& file)
{
    Drawing drawing{file, nullptr};
    const std::string path = (folder / file).string();
    const std::string error = ErrorOf([&](GError** raw) {
        drawing.handle.reset(rsvg_handle_new_from_file(path.c_str(), raw));
        return drawing.handle != nullptr;
    });
    if (!error.empty())
        throw SourceError(0, "the drawing '" + file + "': " + error);
    return drawing;
}

RsvgRectangle ViewBoxOf(const Drawing& drawing)
{
    gboolean hasWidth = FALSE, hasHeight = FALSE, hasBox = FALSE;
    RsvgLength width, height;
    RsvgRectangle box{};
    rsvg_handle_get_intrinsic_dimensions(drawing.handle.get(), &hasWidth, &width, &hasHeight, &height,
                                         &hasBox, &box);
    if (!hasBox || box.width <= 0 || box.height <= 0)
        throw SourceError(0, "the drawing '" + drawing.file + "' has no viewBox");
    return box;
}

// The average of the samples under each pixel; cairo's are premultiplied, ours are not.
Pixels ScaleDown(cairo_surface_t* surface, int width, int height, int oversampling)
{
    cairo_surface_flush(surface);
    const unsigned char* const bytes = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    Pixels pixels(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint32_t alpha = 0, red = 0, green = 0, blue = 0;
            for (int sy = 0; sy < oversampling; ++sy) {
                const auto* row = reinterpret_cast<const std::uint32_t*>(
                    bytes + static_cast<std::ptrdiff_t>(y * oversampling + sy) * stride);
                for (int sx = 0; sx < oversampling; ++sx) {
                    const std::uint32_t sample = row[x * oversampling + sx];
                    alpha += sample >> 24;
                    red += (sample >> 16) & 0xFF;
                    green += (sample >> 8) & 0xFF;
                    blue += sample & 0xFF;
                }
            }
            if (alpha == 0)
                continue;
            const auto samples = static_cast<std::uint32_t>(oversampling * oversampling);
            const auto plain = [&](std::uint32_t sum) {
                return static_cast<std::uint8_t>(std::min((sum * 255 + alpha / 2) / alpha, 255u));
            };
            pixels.At(x, y) = {plain(red), plain(green), plain(blue),
                               static_cast<std::uint8_t>((alpha + samples / 2) / samples)};
        }
    }
    return pixels;
}

cairo_matrix_t ToCairo(const Affine& affine)
{
    return {affine.xx, affine.yx, affine.xy, affine.yy, affine.x0, affine.y0};
}

} // namespace

class Renderer::Drawings {
public:
    Drawings(const CharacterSource& source, const std::filesystem::path& folder)
        : oversampling_(std::max(kLeastOversampling, kSamplesToAUnit / source.detail)),
          width_(source.width * source.detail * oversampling_),
          height_(source.height * source.detail * oversampling_)
    {
        for (const std::string& file : source.drawings)
            drawings_.push_back(Open(folder, file));
        const RsvgRectangle box = ViewBoxOf(drawings_.front());
        for (const Drawing& drawing : drawings_) {
            const RsvgRectangle other = ViewBoxOf(drawing);
            if (other.x != box.x || other.y != box.y || other.width != box.width ||
                other.height != box.height)
                throw SourceError(0, "the drawing '" + drawing.file + "' has another viewBox than the first");
        }
        const double scale = std::min(width_ / box.width, height_ / box.height);
        toSamples_ =
            Affine::Translation({(width_ - scale * box.width) / 2, (height_ - scale * box.height) / 2}) *
            Affine::Scaling({scale, scale}) * Affine::Translation({-box.x, -box.y});
        fromSamples_ =
            Affine::Translation({box.x, box.y}) * Affine::Scaling({1 / scale, 1 / scale}) *
            Affine::Translation({-(width_ - scale * box.width) / 2, -(height_ - scale * box.height) / 2});
        for (const Part& part : source.parts) {
            if (!part.isJoint)
                Record(part.name, part.line);
            for (const std::string& variant : part.variants)
                Record(variant, part.line);
        }
    }

    int Oversampling() const { return oversampling_; }

    Surface Draw(const std::vector<Part>& parts, const Stance& stance) const
    {
        Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width_, height_));
        const Context context(cairo_create(surface.get()));
        for (const int i : stance.paintOrder) {
            const PartStance& as = stance.parts[static_cast<std::size_t>(i)];
            if (as.draw.empty() || !as.shown || as.opacity <= 0)
                continue;
            const cairo_matrix_t matrix = ToCairo(toSamples_ * TransformOf(parts, stance, i) * fromSamples_);
            if (std::abs(matrix.xx * matrix.yy - matrix.xy * matrix.yx) < kNothing)
                continue; // scaled to nothing
            Paint(context.get(), elements_.at(as.draw), matrix, as.opacity);
        }
        if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS)
            throw SourceError(0, std::string("drawing failed: ") +
                                     cairo_status_to_string(cairo_status(context.get())));
        return surface;
    }

private:
    struct Element {
        Surface recording;
        double x = 0, y = 0, width = 0, height = 0; // of what it paints
    };

    static void Paint(cairo_t* context, const Element& element, const cairo_matrix_t& matrix, double opacity)
    {
        // Played back without a clip, each element would cost a layer of the size of the frame.
        cairo_save(context);
        cairo_set_matrix(context, &matrix);
        cairo_rectangle(context, element.x, element.y, element.width, element.height);
        cairo_identity_matrix(context);
        double left = 0, top = 0, right = 0, bottom = 0;
        cairo_path_extents(context, &left, &top, &right, &bottom);
        cairo_new_path(context);
        cairo_rectangle(context, std::floor(left) - 1, std::floor(top) - 1, std::ceil(right - left) + 3,
                        std::ceil(bottom - top) + 3);
        cairo_clip(context);
        cairo_set_matrix(context, &matrix);
        cairo_set_source_surface(context, element.recording.get(), 0, 0);
        cairo_paint_with_alpha(context, opacity);
        cairo_restore(context);
    }

    void Record(const std::string& id, int line)
    {
        if (elements_.contains(id))
            return;
        const std::string reference = "#" + id;
        const Drawing* home = nullptr;
        for (const Drawing& drawing : drawings_) {
            if (!rsvg_handle_has_sub(drawing.handle.get(), reference.c_str()))
                continue;
            if (home)
                throw SourceError(line,
                                  "'" + id + "' is in '" + home->file + "' and in '" + drawing.file + "'");
            home = &drawing;
        }
        if (!home)
            throw SourceError(line, "no drawing has an element with the id '" + id + "'");

        Element element;
        element.recording.reset(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
        const Context context(cairo_create(element.recording.get()));
        const RsvgRectangle viewport{0, 0, static_cast<double>(width_), static_cast<double>(height_)};
        const std::string error = ErrorOf([&](GError** raw) {
            return rsvg_handle_render_layer(home->handle.get(), context.get(), reference.c_str(), &viewport,
                                            raw);
        });
        if (!error.empty())
            throw SourceError(line, "'" + id + "' in '" + home->file + "': " + error);
        cairo_recording_surface_ink_extents(element.recording.get(), &element.x, &element.y, &element.width,
                                            &element.height);
        elements_.emplace(id, std::move(element));
    }

    int oversampling_; // samples to a pixel, in each direction
    int width_;        // in samples
    int height_;
    Affine toSamples_, fromSamples_; // from drawing units and back
    std::vector<Drawing> drawings_;
    std::map<std::string, Element> elements_; // in samples
};

Renderer::Renderer(const CharacterSource& source, const std::filesystem::path& folder)
    : source_(source), drawings_(std::make_unique<Drawings>(source, folder))
{
}

Renderer::~Renderer() = default;

Pixels Renderer::Draw(const Stance& stance) const
{
    const Surface surface = drawings_->Draw(source_.parts, stance);
    Pixels pixels = ScaleDown(surface.get(), source_.width * source_.detail, source_.height * source_.detail,
                              drawings_->Oversampling());
    HardenOutline(pixels);
    return pixels;
}

} // namespace voxtrel::acsc
