#include "tests/windows/drawn_character.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace voxtrel::agent {
namespace {

constexpr int kSide = 128;
constexpr std::uint8_t kTransparent = 10;
constexpr std::uint8_t kLine = 30;
constexpr std::uint8_t kWhite = 31;
constexpr std::uint8_t kRed = 32;
constexpr std::uint8_t kFirstSkin = 40; // 40 shades, the lightest first
constexpr int kSkins = 40;

class DrawnImages : public acs::ImageSource {
public:
    std::vector<acs::Image> images;

    std::size_t Count() const override { return images.size(); }
    acs::Image Decode(std::size_t index) const override { return images[index]; }
};

acs::Image Empty(int width, int height)
{
    return {width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width) * height, kTransparent)};
}

void Ellipse(acs::Image& image, double cx, double cy, double rx, double ry, std::uint8_t color)
{
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            if (std::hypot((x + 0.5 - cx) / rx, (y + 0.5 - cy) / ry) <= 1)
                image.pixels[static_cast<std::size_t>(y) * image.width + x] = color;
        }
    }
}

// The head, its middle at a height, with eyes open by a share and looking up by some pixels.
acs::Image Head(double middle, double open, double up)
{
    acs::Image image = Empty(kSide, kSide);
    Ellipse(image, 64, middle, 52, 52, kLine);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            if (std::hypot(x + 0.5 - 64, y + 0.5 - middle) > 49)
                continue;
            const double shade = std::hypot(x - 48, y - middle + 18) / 85;
            image.pixels[static_cast<std::size_t>(y) * kSide + x] = static_cast<std::uint8_t>(
                kFirstSkin + std::min(kSkins - 1, static_cast<int>(shade * kSkins)));
        }
    }
    for (const int x : {46, 82}) {
        Ellipse(image, x, middle - 12, 11, 1.5 + 12.5 * open, kLine);
        Ellipse(image, x, middle - 12, 9, 12 * open, kWhite);
        if (open > 0.5)
            Ellipse(image, x, middle - 9 - up, 4, 5, kLine);
    }
    return image;
}

acs::Image MouthImage(double rx, double ry)
{
    acs::Image image = Empty(48, 32);
    Ellipse(image, 24, 16, rx, ry + 1.5, kLine);
    if (ry > 2)
        Ellipse(image, 24, 16, rx - 3, ry - 1, kRed);
    return image;
}

acs::Frame FrameOf(std::uint32_t image, int duration)
{
    acs::Frame frame;
    frame.images = {{7, 40, 78}, {image, 0, 0}};
    frame.duration = duration;
    return frame;
}

} // namespace

acs::CharacterFile DrawCharacter()
{
    acs::CharacterFile file;
    file.guid = "{4F7C2C54-3F6E-4B5B-9B7A-5D1B6A0C9D11}";
    file.width = file.height = kSide;
    file.transparentIndex = kTransparent;
    file.palette[kLine] = {40, 30, 60};
    file.palette[kWhite] = {255, 255, 255};
    file.palette[kRed] = {200, 60, 70};
    for (int i = 0; i < kSkins; ++i)
        file.palette[kFirstSkin + i] = {static_cast<std::uint8_t>(150 - 2 * i),
                                        static_cast<std::uint8_t>(220 - 2 * i),
                                        static_cast<std::uint8_t>(240 - 2 * i)};
    file.localized = {{0x0409, L"Round", L"A drawn test character", {}}};
    file.balloon.emplace();
    file.balloon->background = {255, 251, 240};

    auto drawn = std::make_shared<DrawnImages>();
    drawn->images = {Head(66, 1, 0),     Head(66, 1, 6),    Head(66, 0.1, 0),  Head(150, 1, 0),
                     Head(110, 1, 0),    Head(80, 1, 0),    Head(60, 1, 3),    MouthImage(18, 0.5),
                     MouthImage(18, 1),  MouthImage(14, 4), MouthImage(15, 7), MouthImage(16, 10),
                     MouthImage(17, 13), MouthImage(11, 9), MouthImage(7, 8)};
    file.images = drawn;

    acs::Animation rest{L"RestPose", acs::Transition::None, {}, {FrameOf(0, 10)}, false};
    for (int mouth = 0; mouth < 7; ++mouth)
        rest.frames[0].mouths.push_back(
            {static_cast<acs::Mouth>(mouth), true, static_cast<std::uint32_t>(8 + mouth), 40, 78});
    acs::Animation show{L"Show", acs::Transition::None, {}, {}, false};
    for (const std::uint32_t image : {3U, 4U, 5U, 6U, 0U})
        show.frames.push_back(FrameOf(image, 8));
    for (int i = 0; i < 2; ++i)
        show.frames[i].images.erase(show.frames[i].images.begin());
    acs::Animation hide = show;
    hide.name = L"Hide";
    std::reverse(hide.frames.begin(), hide.frames.end());
    file.animations = {
        rest,
        show,
        hide,
        {L"GetAttention",
         acs::Transition::ReturnAnimation,
         L"GETATTENTIONRETURN",
         {FrameOf(1, 20), FrameOf(6, 30)},
         false},
        {L"GetAttentionReturn", acs::Transition::None, {}, {FrameOf(1, 10), FrameOf(0, 10)}, false},
        {L"Blink", acs::Transition::None, {}, {FrameOf(2, 12), FrameOf(0, 10)}, false}};
    file.states = {{L"Speaking", {L"RestPose"}},
                   {L"Showing", {L"Show"}},
                   {L"Hiding", {L"Hide"}},
                   {L"IdlingLevel1", {L"Blink"}}};
    return file;
}

} // namespace voxtrel::agent
