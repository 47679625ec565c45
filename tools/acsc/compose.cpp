#include "tools/acsc/compose.h"

#include "agent/acs/names.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace voxtrel::acsc {

namespace {

using agent::acs::CharacterFile;
using agent::acs::Image;

void Paint(Pixels& onto, const CharacterFile& character, const Image& image, int left, int top)
{
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const std::uint8_t index =
                image.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                             static_cast<std::size_t>(x)];
            if (index == character.transparentIndex || !onto.Contains(left + x, top + y))
                continue;
            const agent::acs::Color& color = character.palette[index];
            onto.At(left + x, top + y) = {color.red, color.green, color.blue, 255};
        }
    }
}

template <typename Named> const Named* Find(const std::vector<Named>& among, std::wstring_view name)
{
    const auto found = std::find_if(among.begin(), among.end(),
                                    [&](const Named& one) { return agent::acs::SameName(one.name, name); });
    return found == among.end() ? nullptr : &*found;
}

} // namespace

Pixels ComposeFrame(const CharacterFile& character, const agent::acs::Frame& frame,
                    std::optional<agent::acs::Mouth> mouth)
{
    const auto overlay =
        std::find_if(frame.mouths.begin(), frame.mouths.end(),
                     [&](const agent::acs::MouthOverlay& one) { return mouth && one.mouth == *mouth; });
    const bool withMouth = overlay != frame.mouths.end();
    Pixels picture(character.width, character.height);
    for (std::size_t i = frame.images.size(); i-- > 0;) {
        if (i == 0 && withMouth && overlay->replacesTopImage)
            break;
        const agent::acs::FrameImage& image = frame.images[i];
        Paint(picture, character, character.images->Decode(image.image), image.x, image.y);
    }
    if (withMouth)
        Paint(picture, character, character.images->Decode(overlay->image), overlay->x, overlay->y);
    return picture;
}

const agent::acs::Animation* FindAnimation(const CharacterFile& character, std::wstring_view name)
{
    return Find(character.animations, name);
}

const agent::acs::State* FindState(const CharacterFile& character, std::wstring_view name)
{
    return Find(character.states, name);
}

bool IsUnseen(const agent::acs::Frame& frame) { return frame.images.empty() && frame.duration == 0; }

const char* MouthName(agent::acs::Mouth mouth)
{
    constexpr std::array<const char*, 7> kNames{"closed", "slight", "partly", "open",
                                                "fully",  "medium", "narrow"};
    const auto index = static_cast<std::size_t>(mouth);
    return index < kNames.size() ? kNames[index] : "unknown";
}

} // namespace voxtrel::acsc
