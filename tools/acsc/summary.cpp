#include "tools/acsc/summary.h"

#include "agent/acs/unicode.h"
#include "tools/acsc/compose.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace voxtrel::acsc {

namespace {

using agent::acs::Animation;
using agent::acs::CharacterFile;
using agent::acs::Color;
using agent::acs::Frame;
using agent::acs::Image;
using agent::acs::Transition;
using agent::acs::Utf8FromWide;

std::string Number(std::size_t number) { return std::to_string(number); }
std::string Number(int number) { return std::to_string(number); }

struct ImageStatistics {
    std::size_t damaged = 0;
    std::uint64_t pixels = 0;
    std::array<std::uint64_t, 256> used{}; // pixels of each palette entry

    std::size_t Colors(std::uint8_t transparent) const
    {
        std::size_t colors = 0;
        for (std::size_t i = 0; i < used.size(); ++i)
            colors += used[i] > 0 && i != transparent ? 1 : 0;
        return colors;
    }
};

ImageStatistics CountPixels(const CharacterFile& character)
{
    ImageStatistics statistics;
    for (std::size_t i = 0; i < character.images->Count(); ++i) {
        const Image image = character.images->Decode(i);
        statistics.damaged += image.width == 0 ? 1 : 0;
        statistics.pixels += image.pixels.size();
        for (const std::uint8_t pixel : image.pixels)
            ++statistics.used[pixel];
    }
    return statistics;
}

std::string Hex(const Color& color)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", color.red, color.green, color.blue);
    return text.data();
}

std::string DescribeIdentity(const CharacterFile& character)
{
    std::string text = "Identity    " + character.guid + "\n";
    text += "Frame       " + Number(character.width) + " x " + Number(character.height) + " pixels\n";
    for (const auto& info : character.localized) {
        std::array<char, 8> language{};
        std::snprintf(language.data(), language.size(), "0x%04X", info.language);
        text += "Language    " + std::string(language.data()) + "  " + Utf8FromWide(info.name) + ": " +
                Utf8FromWide(info.description) + "\n";
    }
    if (character.standardAnimationSet)
        text += "Set         says that it has the standard animations\n";
    if (const auto& voice = character.voice)
        text +=
            "Voice       " + voice->modeId + ", " + Number(std::size_t{voice->speed}) + " words a minute\n";
    else
        text += "Voice       none\n";
    if (const auto& balloon = character.balloon)
        text += "Balloon     " + Number(balloon->lines) + " lines of " + Number(balloon->charactersPerLine) +
                " characters, " + Utf8FromWide(balloon->fontName) + " " + Number(balloon->fontHeight) + ", " +
                Hex(balloon->text) + " on " + Hex(balloon->background) + "\n";
    else
        text += "Balloon     none\n";
    return text;
}

std::string DescribeFrame(const Frame& frame, std::size_t number)
{
    std::string text = "    " + Number(number) + ": " + Number(frame.duration);
    for (const auto& image : frame.images)
        text +=
            "  image " + Number(std::size_t{image.image}) + " at " + Number(image.x) + "," + Number(image.y);
    if (frame.images.empty())
        text += IsUnseen(frame) ? "  unseen" : "  empty";
    for (const auto& branch : frame.branches)
        text += "  branch " + Number(branch.target) + " " + Number(branch.probability) + "%";
    if (frame.exitFrame)
        text += "  exit " + Number(*frame.exitFrame);
    if (frame.sound)
        text += "  sound " + Number(*frame.sound);
    if (!frame.mouths.empty())
        text += "  " + Number(frame.mouths.size()) + " mouths";
    return text + "\n";
}

std::string DescribeAnimation(const Animation& animation)
{
    int duration = 0;
    for (const Frame& frame : animation.frames)
        duration += frame.duration;
    std::string text = "  " + Utf8FromWide(animation.name) + "  " + Number(animation.frames.size()) +
                       " frames, " + Number(duration) + " hundredths";
    if (animation.transition == Transition::ReturnAnimation)
        text += ", return " + Utf8FromWide(animation.returnAnimation);
    if (animation.transition == Transition::ExitBranches)
        text += ", exits";
    text += animation.damaged ? ", DAMAGED\n" : "\n";
    for (std::size_t i = 0; i < animation.frames.size(); ++i)
        text += DescribeFrame(animation.frames[i], i);
    return text;
}

} // namespace

std::string Summary(const CharacterFile& character)
{
    std::size_t frames = 0;
    for (const Animation& animation : character.animations)
        frames += animation.frames.size();
    return Number(character.animations.size()) + " animations, " + Number(frames) + " frames, " +
           Number(character.images->Count()) + " images, " +
           Number(CountPixels(character).Colors(character.transparentIndex)) + " colours";
}

std::string Description(const CharacterFile& character)
{
    const ImageStatistics statistics = CountPixels(character);
    std::string text = DescribeIdentity(character);
    text += "Images      " + Number(character.images->Count()) + ", " + std::to_string(statistics.pixels) +
            " pixels" + (statistics.damaged > 0 ? ", " + Number(statistics.damaged) + " DAMAGED" : "") + "\n";
    text += "Colours     " + Number(statistics.Colors(character.transparentIndex)) +
            " of the palette in use, index " + Number(std::size_t{character.transparentIndex}) +
            " is transparent\n";
    text += "Sounds      " + Number(character.sounds ? character.sounds->Count() : 0) + "\n";
    text += "States\n";
    for (const auto& state : character.states) {
        text += "  " + Utf8FromWide(state.name) + ":";
        for (const std::wstring& name : state.animations)
            text.append(" ").append(Utf8FromWide(name));
        text += "\n";
    }
    text += "Animations\n";
    for (const Animation& animation : character.animations)
        text += DescribeAnimation(animation);
    return text;
}

} // namespace voxtrel::acsc
