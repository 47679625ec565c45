#include "tests/agent/stage/test_character.h"

#include <initializer_list>
#include <utility>

namespace voxtrel::agent::stage {
namespace {

constexpr int kFirstColor = 20;

acs::Frame Picture(std::uint32_t image)
{
    acs::Frame frame;
    frame.images = {{image, 0, 0}};
    frame.duration = 10;
    return frame;
}

acs::Animation Pictures(std::wstring name, std::initializer_list<std::uint32_t> images)
{
    acs::Animation animation;
    animation.name = std::move(name);
    for (const std::uint32_t image : images)
        animation.frames.push_back(Picture(image));
    return animation;
}

acs::Animation Returning(acs::Animation animation, std::wstring by)
{
    animation.transition = acs::Transition::ReturnAnimation;
    animation.returnAnimation = std::move(by);
    return animation;
}

acs::Animation RestPose()
{
    acs::Animation pose = Pictures(L"RestPose", {0});
    for (int mouth = 0; mouth < 7; ++mouth) {
        pose.frames[0].mouths.push_back(
            {static_cast<acs::Mouth>(mouth), false, static_cast<std::uint32_t>(kFirstMouth + mouth), 3, 5});
    }
    return pose;
}

acs::Animation Wave()
{
    acs::Animation wave = Pictures(L"Wave", {6, 7, 8});
    wave.transition = acs::Transition::ExitBranches;
    wave.frames.emplace_back();
    wave.frames[2].branches = {{3, 100}};
    wave.frames[0].exitFrame = 3;
    wave.frames[1].exitFrame = 0;
    wave.frames[2].exitFrame = 1;
    return wave;
}

acs::Animation Looping(std::wstring name, std::uint32_t first)
{
    acs::Animation loop = Pictures(std::move(name), {first, first + 1, first + 2});
    loop.transition = acs::Transition::ExitBranches;
    loop.frames[1].branches = {{0, 100}};
    loop.frames[0].exitFrame = 2;
    loop.frames[1].exitFrame = 2;
    return loop;
}

} // namespace

acs::Image TestImages::Decode(std::size_t index) const
{
    decoded.insert(index);
    const int side = index < kFirstMouth ? 8 : 2;
    const auto color = static_cast<std::uint8_t>(kFirstColor + index);
    return {side, side, std::vector<std::uint8_t>(static_cast<std::size_t>(side) * side, color)};
}

acs::CharacterFile MakeTestCharacter()
{
    acs::CharacterFile file;
    file.guid = "{00000000-0000-0000-0000-000000000001}";
    file.width = file.height = 8;
    for (int i = 0; i < 256; ++i)
        file.palette[i] = {static_cast<std::uint8_t>(i), 100, 200};
    file.localized = {{0x0407, L"Probe", {}, {}}, {0x0409, L"Tester", {}, {}}};
    file.balloon.emplace();
    file.balloon->autoHide = true;
    file.balloon->autoPace = true;
    file.images = std::make_shared<TestImages>();

    acs::Animation hide = Pictures(L"Hide", {2, 1});
    hide.frames.emplace_back();
    acs::Animation spin = Pictures(L"Spin", {18});
    spin.frames[0].duration = 0;
    spin.frames[0].branches = {{0, 100}};
    acs::Animation damaged = Pictures(L"Damaged", {0});
    damaged.damaged = true;
    file.animations = {RestPose(),
                       Pictures(L"Show", {1, 2, 0}),
                       hide,
                       Returning(Pictures(L"GetAttention", {3, 4, 5}), L"GETATTENTIONRETURN"),
                       Pictures(L"GetAttentionReturn", {4, 3, 0}),
                       Wave(),
                       Looping(L"Loop", 9),
                       Pictures(L"Blink", {12, 0}),
                       Returning(Pictures(L"Yawn", {13, 14}), L"YawnReturn"),
                       Pictures(L"YawnReturn", {13, 0}),
                       Looping(L"Sleep", 15),
                       spin,
                       damaged};
    file.states = {{L"SPEAKING", {L"RestPose"}}, {L"SHOWING", {L"Show", L"Missing"}},
                   {L"HIDING", {L"Hide"}},       {L"IDLINGLEVEL1", {L"Blink"}},
                   {L"IDLINGLEVEL2", {L"Yawn"}}, {L"IDLINGLEVEL3", {L"Sleep"}}};
    return file;
}

int ImageAt(const stage::Picture& picture, int x, int y)
{
    const std::size_t i = static_cast<std::size_t>(y) * picture.size.width + x;
    return picture.mask[i] == 0 ? -1 : picture.colors[i * 3] - kFirstColor;
}

} // namespace voxtrel::agent::stage
