#include "agent/acs/animation_data.h"

#include "agent/acs/byte_cursor.h"
#include "agent/acs/format.h"

#include <algorithm>
#include <utility>

namespace voxtrel::agent::acs {

namespace {

void ReadImages(ByteCursor& cursor, Frame& frame)
{
    constexpr std::size_t kImageSize = 8;
    const std::size_t count = cursor.Count(cursor.U16(), kImageSize);
    frame.images.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        FrameImage image;
        image.image = cursor.U32();
        image.x = cursor.I16();
        image.y = cursor.I16();
        frame.images.push_back(image);
    }
}

void ReadBranches(ByteCursor& cursor, Frame& frame)
{
    constexpr std::size_t kBranchSize = 4;
    const std::size_t count = cursor.Count(cursor.U8(), kBranchSize);
    for (std::size_t i = 0; i < count; ++i) {
        const int target = cursor.U16();
        frame.branches.push_back({target, cursor.U16()});
    }
}

void ReadMouths(ByteCursor& cursor, Frame& frame)
{
    constexpr std::size_t kSmallestMouth = 14;
    const std::size_t count = cursor.Count(cursor.U8(), kSmallestMouth);
    for (std::size_t i = 0; i < count && cursor.Ok(); ++i) {
        MouthOverlay overlay;
        const std::uint8_t mouth = cursor.U8();
        overlay.mouth = static_cast<Mouth>(mouth);
        overlay.replacesTopImage = cursor.Bool();
        overlay.image = cursor.U16();
        cursor.U8();
        const bool hasRegion = cursor.Bool();
        overlay.x = cursor.I16();
        overlay.y = cursor.I16();
        cursor.U16(); // a size that the image tells better
        cursor.U16();
        if (hasRegion)
            cursor.Bytes(cursor.U32());
        if (mouth < kMouthCount)
            frame.mouths.push_back(overlay);
    }
}

Frame ReadFrame(ByteCursor& cursor)
{
    Frame frame;
    ReadImages(cursor, frame);
    frame.sound = cursor.U16();
    frame.duration = cursor.U16();
    frame.exitFrame = cursor.I16();
    ReadBranches(cursor, frame);
    ReadMouths(cursor, frame);
    return frame;
}

void DropIndexesThatLeadNowhere(Frame& frame, const IndexLimits& limits, std::size_t frames)
{
    const auto leadsToFrame = [&](int target) {
        return target >= 0 && static_cast<std::size_t>(target) < frames;
    };
    const auto leadsToImage = [&](const auto& user) { return user.image < limits.images; };

    if (frame.sound && static_cast<std::size_t>(*frame.sound) >= limits.sounds)
        frame.sound.reset();
    if (frame.exitFrame && !leadsToFrame(*frame.exitFrame))
        frame.exitFrame.reset();
    std::erase_if(frame.branches, [&](const Branch& branch) { return !leadsToFrame(branch.target); });
    std::erase_if(frame.mouths, [&](const MouthOverlay& mouth) { return !leadsToImage(mouth); });
    if (!frame.images.empty() && !leadsToImage(frame.images.front())) {
        // The image that the mouths stand in for is gone already.
        for (MouthOverlay& mouth : frame.mouths)
            mouth.replacesTopImage = false;
    }
    std::erase_if(frame.images, [&](const FrameImage& image) { return !leadsToImage(image); });
}

} // namespace

Animation ReadAnimation(std::span<const std::uint8_t> block, const IndexLimits& limits)
{
    constexpr std::size_t kSmallestFrame = 10;
    Animation animation;
    ByteCursor cursor(block);
    animation.name = cursor.Text();
    const std::uint8_t transition = cursor.U8();
    animation.returnAnimation = cursor.Text();
    const std::size_t count = cursor.Count(cursor.U16(), kSmallestFrame);
    for (std::size_t i = 0; i < count && cursor.Ok(); ++i)
        animation.frames.push_back(ReadFrame(cursor));

    const bool known = transition <= static_cast<std::uint8_t>(Transition::None);
    animation.transition = known ? static_cast<Transition>(transition) : Transition::None;
    animation.damaged = !cursor.Ok();
    if (animation.damaged)
        animation.frames.clear();
    for (Frame& frame : animation.frames)
        DropIndexesThatLeadNowhere(frame, limits, animation.frames.size());
    return animation;
}

} // namespace voxtrel::agent::acs
