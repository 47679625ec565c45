#pragma once

#include "agent/acs/character_file.h"
#include "agent/stage/picture.h"

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <utility>

namespace voxtrel::agent::stage {

// Draws frames. Images are decoded when they are first needed, and both the images and the finished pictures
// of the last frames are kept, so that a mouth which comes back costs nothing.
class FrameComposer {
public:
    // The file must outlive the composer.
    explicit FrameComposer(const acs::CharacterFile& file);

    // The frame with a mouth, or without one, at a size in pixels (each side at least 1). frame is a frame of
    // the file; null gives an empty picture. The same request gives the same object as long as it is
    // remembered.
    std::shared_ptr<const Picture> Compose(const acs::Frame* frame, std::optional<acs::Mouth> mouth,
                                           Size size);

private:
    struct Rendered {
        const acs::Frame* frame = nullptr;
        const acs::MouthOverlay* overlay = nullptr;
        Size size;
        std::shared_ptr<const Picture> picture;
    };
    using Canvas = std::vector<std::uint8_t>; // palette indexes of a whole frame

    Picture Draw(const acs::Frame* frame, const acs::MouthOverlay* overlay);
    void Paint(Canvas& canvas, std::uint32_t image, int x, int y, const Canvas* outline);
    const acs::Image& Decoded(std::uint32_t image);

    const acs::CharacterFile& file_;
    std::list<std::pair<std::uint32_t, acs::Image>> images_; // the last used first
    std::list<Rendered> rendered_;                           // the last used first
};

} // namespace voxtrel::agent::stage
