#include "tools/acsc/frames_text.h"

#include "agent/acs/unicode.h"

#include <array>
#include <cstdio>

namespace voxtrel::acsc {

namespace {

using namespace agent::acs;

// In double quotes; what cannot stand there is written as % and two hexadecimal digits.
std::string Quoted(std::string_view text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '%' || (c >= 0 && c < ' ')) {
            std::array<char, 4> code{};
            std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned char>(c));
            quoted += code.data();
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

std::string Quoted(std::wstring_view text) { return Quoted(Utf8FromWide(text)); }

std::string Number(long long value) { return std::to_string(value); }

std::string At(int x, int y) { return " at " + Number(x) + "," + Number(y); }

std::string Hex(const Color& color)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", color.red, color.green, color.blue);
    return text.data();
}

const char* OnOff(bool on) { return on ? "on" : "off"; }

std::string LanguageText(const LocalizedInfo& info)
{
    return "language " + Number(info.language) + " {\n    name " + Quoted(info.name) + "\n    description " +
           Quoted(info.description) + "\n    extra " + Quoted(info.extraData) + "\n}\n";
}

std::string SpeakerText(const VoiceTraits& traits)
{
    return "    speaker {\n        language " + Number(traits.language) + "\n        dialect " +
           Quoted(traits.dialect) + "\n        gender " + Number(traits.gender) + "\n        age " +
           Number(traits.age) + "\n        style " + Quoted(traits.style) + "\n    }\n";
}

std::string VoiceText(const VoiceInfo& voice)
{
    return "voice {\n    engine " + Quoted(voice.engineId) + "\n    mode " + Quoted(voice.modeId) +
           "\n    speed " + Number(voice.speed) + "\n    pitch " + Number(voice.pitch) + "\n" +
           (voice.traits ? SpeakerText(*voice.traits) : "") + "}\n";
}

std::string BalloonText(const BalloonInfo& balloon)
{
    return "balloon {\n    lines " + Number(balloon.lines) + "\n    characters " +
           Number(balloon.charactersPerLine) + "\n    text " + Hex(balloon.text) + "\n    background " +
           Hex(balloon.background) + "\n    border " + Hex(balloon.border) + "\n    font " +
           Quoted(balloon.fontName) + "\n    height " + Number(balloon.fontHeight) + "\n    weight " +
           Number(balloon.fontWeight) + "\n    italic " + OnOff(balloon.italic) + "\n    sizetotext " +
           OnOff(balloon.sizeToText) + "\n    autohide " + OnOff(balloon.autoHide) + "\n    autopace " +
           OnOff(balloon.autoPace) + "\n}\n";
}

std::string PaletteText(const std::array<Color, 256>& palette)
{
    std::string text;
    for (std::size_t i = 0; i < palette.size(); ++i)
        text += (i % 8 == 0 ? (i == 0 ? "colors" : "\ncolors") : "") + (" " + Hex(palette[i]));
    return text + "\n";
}

std::string FrameText(const Frame& frame)
{
    std::string text = "    frame " + Number(frame.duration) + " {\n";
    for (const FrameImage& image : frame.images)
        text += "        image " + Number(image.image) + At(image.x, image.y) + "\n";
    if (frame.sound)
        text += "        sound " + Number(*frame.sound) + "\n";
    if (frame.exitFrame)
        text += "        exit " + Number(*frame.exitFrame) + "\n";
    for (const Branch& branch : frame.branches)
        text += "        branch " + Number(branch.target) + " " + Number(branch.probability) + "\n";
    for (const MouthOverlay& mouth : frame.mouths)
        text += "        mouth " + Number(static_cast<int>(mouth.mouth)) + " image " + Number(mouth.image) +
                At(mouth.x, mouth.y) + (mouth.replacesTopImage ? " replaces" : "") + "\n";
    return text + "    }\n";
}

std::string AnimationText(const Animation& animation)
{
    static constexpr std::array<const char*, 3> kLeave{"return", "exits", "none"};
    std::string text = "animation " + Quoted(animation.name) + " {\n    leave " +
                       kLeave.at(static_cast<std::size_t>(animation.transition)) + "\n";
    if (!animation.returnAnimation.empty())
        text += "    return " + Quoted(animation.returnAnimation) + "\n";
    for (const Frame& frame : animation.frames)
        text += FrameText(frame);
    return text + "}\n";
}

} // namespace

std::string WriteFramesText(const TakenApart& parts)
{
    const CharacterFile& character = parts.character;
    std::string text = "guid " + Quoted(character.guid) + "\nsize " + Number(character.width) + "," +
                       Number(character.height) + "\ntransparent " + Number(character.transparentIndex) +
                       "\n";
    if (character.standardAnimationSet)
        text += "standardset\n";
    text += "animationset " + Number(character.animationSet.major) + " " +
            Number(character.animationSet.minor) + "\n";
    if (!parts.trayMask.empty())
        text += "trayicon " + Quoted(parts.trayMask) + " " + Quoted(parts.trayColors) + "\n";
    text += PaletteText(character.palette);
    for (const LocalizedInfo& info : character.localized)
        text += LanguageText(info);
    if (character.voice)
        text += VoiceText(*character.voice);
    if (character.balloon)
        text += BalloonText(*character.balloon);
    for (const std::string& file : parts.images)
        text += "image " + Quoted(file) + "\n";
    for (const std::string& file : parts.sounds)
        text += "sound " + Quoted(file) + "\n";
    for (const State& state : character.states) {
        text += "state " + Quoted(state.name);
        for (const std::wstring& name : state.animations)
            text += " " + Quoted(name);
        text += "\n";
    }
    for (const Animation& animation : character.animations)
        text += AnimationText(animation);
    return text;
}

} // namespace voxtrel::acsc
