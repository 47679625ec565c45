#include "agent/stage/frame_composer.h"

#include "agent/stage/lip_sync.h"
#include "agent/stage/scaling.h"

#include <algorithm>
#include <cstddef>

namespace voxtrel::agent::stage {
namespace {

constexpr std::size_t kImagesKept = 32;
constexpr std::size_t kPicturesKept = 16; // a speaking pose with its seven mouths, and the way to it

} // namespace

FrameComposer::FrameComposer(const acs::CharacterFile& file) : file_(file) {}

std::shared_ptr<const Picture> FrameComposer::Compose(const acs::Frame* frame,
                                                      std::optional<acs::Mouth> mouth, Size size)
{
    const acs::MouthOverlay* overlay = frame != nullptr && mouth ? OverlayFor(*frame, *mouth) : nullptr;
    const auto known = std::find_if(rendered_.begin(), rendered_.end(), [&](const Rendered& r) {
        return r.frame == frame && r.overlay == overlay && r.size == size;
    });
    if (known != rendered_.end()) {
        rendered_.splice(rendered_.begin(), rendered_, known);
        return rendered_.front().picture;
    }

    auto picture = std::make_shared<const Picture>(Scale(Draw(frame, overlay), size));
    rendered_.push_front({frame, overlay, size, picture});
    if (rendered_.size() > kPicturesKept)
        rendered_.pop_back();
    return picture;
}

Picture FrameComposer::Draw(const acs::Frame* frame, const acs::MouthOverlay* overlay)
{
    const std::size_t pixels = static_cast<std::size_t>(file_.width) * file_.height;
    Canvas canvas(pixels, file_.transparentIndex);
    if (frame != nullptr) {
        const bool replaced = overlay != nullptr && overlay->replacesTopImage;
        for (std::size_t i = frame->images.size(); i-- > (replaced ? 1U : 0U);) {
            const acs::FrameImage& image = frame->images[i];
            Paint(canvas, image.image, image.x, image.y, nullptr);
        }
        if (overlay != nullptr) {
            const Canvas outline = canvas;
            Paint(canvas, overlay->image, overlay->x, overlay->y, replaced ? nullptr : &outline);
        }
    }

    Picture picture{{file_.width, file_.height}, Canvas(pixels * 3), Canvas(pixels)};
    for (std::size_t i = 0; i < pixels; ++i) {
        if (canvas[i] == file_.transparentIndex)
            continue;
        const acs::Color color = file_.palette[canvas[i]];
        picture.mask[i] = 255;
        picture.colors[i * 3] = color.red;
        picture.colors[i * 3 + 1] = color.green;
        picture.colors[i * 3 + 2] = color.blue;
    }
    return picture;
}

// Pixels outside the outline are left out where one is given.
void FrameComposer::Paint(Canvas& canvas, std::uint32_t image, int x, int y, const Canvas* outline)
{
    const acs::Image& source = Decoded(image);
    const int firstRow = std::max(0, -y);
    const int lastRow = std::min(source.height, file_.height - y);
    const int firstColumn = std::max(0, -x);
    const int lastColumn = std::min(source.width, file_.width - x);
    for (int row = firstRow; row < lastRow; ++row) {
        for (int column = firstColumn; column < lastColumn; ++column) {
            const std::uint8_t index = source.pixels[static_cast<std::size_t>(row) * source.width + column];
            const std::size_t target = static_cast<std::size_t>(y + row) * file_.width + (x + column);
            const bool inside = outline == nullptr || (*outline)[target] != file_.transparentIndex;
            if (index != file_.transparentIndex && inside)
                canvas[target] = index;
        }
    }
}

const acs::Image& FrameComposer::Decoded(std::uint32_t image)
{
    const auto known =
        std::find_if(images_.begin(), images_.end(), [&](const auto& entry) { return entry.first == image; });
    if (known != images_.end()) {
        images_.splice(images_.begin(), images_, known);
        return images_.front().second;
    }

    const bool exists = file_.images != nullptr && image < file_.images->Count();
    images_.emplace_front(image, exists ? file_.images->Decode(image) : acs::Image{});
    if (images_.size() > kImagesKept)
        images_.pop_back();
    return images_.front().second;
}

} // namespace voxtrel::agent::stage
