#include "agent/acs/guid.h"
#include "agent/acs/unicode.h"
#include "tools/acsc/character_words.h"
#include "tools/acsc/frames_text.h"
#include "tools/acsc/statement.h"

#include <charconv>
#include <limits>
#include <tuple>
#include <utility>

namespace voxtrel::acsc {

namespace {

using namespace agent::acs;

constexpr int kMostU16 = 0xFFFF, kLeastI16 = -0x8000, kMostI16 = 0x7FFF;
constexpr int kMost = std::numeric_limits<int>::max();
constexpr std::size_t kColors = 256;

std::string TextOf(WordReader& words)
{
    const std::string quoted = words.Quoted("a text");
    std::string text;
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] != '%') {
            text += quoted[i];
            continue;
        }
        unsigned code = 0;
        const char* const digits = quoted.data() + i + 1;
        if (quoted.size() - i < 3 || std::from_chars(digits, digits + 2, code, 16).ptr != digits + 2)
            words.Fail("behind a % two hexadecimal digits are missing");
        text += static_cast<char>(code);
        i += 2;
    }
    return text;
}

std::wstring WideTextOf(WordReader& words) { return WideFromUtf8(TextOf(words)); }

std::string GuidOf(WordReader& words)
{
    const std::string text = TextOf(words);
    if (!text.empty() && !ParseGuid(text))
        words.Fail("an identity has the form {01234567-89AB-CDEF-0123-456789ABCDEF}");
    return text;
}

// "at X,Y".
std::pair<int, int> PlaceOf(WordReader& words)
{
    if (!words.Accept("at"))
        words.Fail("'at X,Y' is missing");
    const Point at = words.Pair("a place");
    const auto fits = [](double n) { return n >= kLeastI16 && n <= kMostI16 && n == static_cast<int>(n); };
    if (!fits(at.x) || !fits(at.y))
        words.Fail("a place is two whole numbers from -32768 to 32767");
    return {static_cast<int>(at.x), static_cast<int>(at.y)};
}

LocalizedInfo LanguageOf(const Statement& statement, WordReader& head)
{
    LocalizedInfo info;
    info.language = static_cast<std::uint16_t>(head.Integer("the language", 0, kMostU16));
    for (const Statement& line : statement.block) {
        WordReader words(line);
        if (words.Accept("name"))
            info.name = WideTextOf(words);
        else if (words.Accept("description"))
            info.description = WideTextOf(words);
        else if (words.Accept("extra"))
            info.extraData = WideTextOf(words);
        words.Finish();
    }
    return info;
}

VoiceTraits TraitsOf(const Statement& statement)
{
    VoiceTraits traits;
    for (const Statement& line : statement.block) {
        WordReader words(line);
        if (words.Accept("language"))
            traits.language = static_cast<std::uint16_t>(words.Integer("the language", 0, kMostU16));
        else if (words.Accept("dialect"))
            traits.dialect = WideTextOf(words);
        else if (words.Accept("gender"))
            traits.gender = static_cast<std::uint16_t>(words.Integer("the gender", 0, kMostU16));
        else if (words.Accept("age"))
            traits.age = static_cast<std::uint16_t>(words.Integer("the age", 0, kMostU16));
        else if (words.Accept("style"))
            traits.style = WideTextOf(words);
        words.Finish();
    }
    return traits;
}

VoiceInfo VoiceOf(const Statement& statement)
{
    VoiceInfo voice;
    for (const Statement& line : statement.block) {
        WordReader words(line);
        if (words.Accept("engine"))
            voice.engineId = GuidOf(words);
        else if (words.Accept("mode"))
            voice.modeId = GuidOf(words);
        else if (words.Accept("speed"))
            voice.speed = static_cast<std::uint32_t>(words.Number("the speed"));
        else if (words.Accept("pitch"))
            voice.pitch = static_cast<std::uint16_t>(words.Integer("the pitch", 0, kMostU16));
        else if (words.Accept("speaker"))
            voice.traits = TraitsOf(line);
        words.Finish();
    }
    return voice;
}

BalloonInfo BalloonOf(const Statement& statement)
{
    BalloonInfo balloon;
    for (const Statement& line : statement.block) {
        WordReader words(line);
        if (words.Accept("lines"))
            balloon.lines = words.Integer("the lines", 0, 255);
        else if (words.Accept("characters"))
            balloon.charactersPerLine = words.Integer("the characters", 0, 255);
        else if (words.Accept("font"))
            balloon.fontName = WideTextOf(words);
        else if (words.Accept("height"))
            balloon.fontHeight = words.Integer("the height", -kMost, kMost);
        else if (words.Accept("weight"))
            balloon.fontWeight = words.Integer("the weight", -kMost, kMost);
        else if (words.Accept("italic"))
            balloon.italic = words.OnOff();
        else
            AcceptBalloonWord(words, balloon);
        words.Finish();
    }
    return balloon;
}

std::uint32_t ImageOf(WordReader& words)
{
    return static_cast<std::uint32_t>(words.Integer("an image", 0, kMostU16));
}

MouthOverlay MouthOf(WordReader& words)
{
    MouthOverlay overlay;
    overlay.mouth = static_cast<Mouth>(words.Integer("a mouth", 0, static_cast<int>(Mouth::Narrow)));
    if (!words.Accept("image"))
        words.Fail("'image N' is missing");
    overlay.image = ImageOf(words);
    std::tie(overlay.x, overlay.y) = PlaceOf(words);
    overlay.replacesTopImage = words.Accept("replaces");
    return overlay;
}

Frame FrameOf(const Statement& statement, WordReader& head)
{
    Frame frame;
    frame.duration = head.Integer("the duration", 0, kMostU16);
    for (const Statement& line : statement.block) {
        WordReader words(line);
        if (words.Accept("image")) {
            FrameImage& image = frame.images.emplace_back();
            image.image = ImageOf(words);
            std::tie(image.x, image.y) = PlaceOf(words);
        } else if (words.Accept("sound")) {
            frame.sound = words.Integer("a sound", 0, kMostU16 - 1);
        } else if (words.Accept("exit")) {
            frame.exitFrame = words.Integer("a frame", 0, kMostI16);
        } else if (words.Accept("branch")) {
            Branch& branch = frame.branches.emplace_back();
            branch.target = words.Integer("a frame", 0, kMostU16);
            branch.probability = words.Integer("a percentage", 0, kMostU16);
        } else if (words.Accept("mouth")) {
            frame.mouths.push_back(MouthOf(words));
        }
        words.Finish();
    }
    return frame;
}

Transition TransitionOf(WordReader& words)
{
    if (words.Accept("return"))
        return Transition::ReturnAnimation;
    if (words.Accept("exits"))
        return Transition::ExitBranches;
    if (!words.Accept("none"))
        words.Fail("'return', 'exits' or 'none' is missing");
    return Transition::None;
}

Animation AnimationOf(const Statement& statement, WordReader& head)
{
    Animation animation;
    animation.name = WideTextOf(head);
    for (const Statement& line : statement.block) {
        WordReader words(line);
        if (words.Accept("leave"))
            animation.transition = TransitionOf(words);
        else if (words.Accept("return"))
            animation.returnAnimation = WideTextOf(words);
        else if (words.Accept("frame"))
            animation.frames.push_back(FrameOf(line, words));
        words.Finish();
    }
    return animation;
}

State StateOf(WordReader& words)
{
    State state{WideTextOf(words), {}};
    while (!words.AtEnd())
        state.animations.push_back(WideTextOf(words));
    return state;
}

} // namespace

TakenApart ParseFramesText(std::string_view text)
{
    TakenApart parts;
    CharacterFile& character = parts.character;
    std::size_t colors = 0;
    for (const Statement& statement : ParseStatements(text)) {
        WordReader words(statement);
        if (words.Accept("guid")) {
            character.guid = GuidOf(words);
        } else if (words.Accept("size")) {
            const Point size = words.Pair("the size");
            if (size.x < 1 || size.x > kMostI16 || size.y < 1 || size.y > kMostI16)
                words.Fail("the size is two whole numbers from 1");
            character.width = static_cast<int>(size.x);
            character.height = static_cast<int>(size.y);
        } else if (words.Accept("transparent")) {
            character.transparentIndex = static_cast<std::uint8_t>(words.Integer("the index", 0, 255));
        } else if (words.Accept("standardset")) {
            character.standardAnimationSet = true;
        } else if (words.Accept("animationset")) {
            character.animationSet.major =
                static_cast<std::uint16_t>(words.Integer("the version", 0, kMostU16));
            character.animationSet.minor =
                static_cast<std::uint16_t>(words.Integer("the version", 0, kMostU16));
        } else if (words.Accept("trayicon")) {
            parts.trayMask = TextOf(words);
            parts.trayColors = TextOf(words);
        } else if (words.Accept("colors")) {
            for (; !words.AtEnd() && colors < kColors; ++colors)
                character.palette.at(colors) = ColorOf(words);
        } else if (words.Accept("language")) {
            character.localized.push_back(LanguageOf(statement, words));
        } else if (words.Accept("voice")) {
            character.voice = VoiceOf(statement);
        } else if (words.Accept("balloon")) {
            character.balloon = BalloonOf(statement);
        } else if (words.Accept("image")) {
            parts.images.push_back(TextOf(words));
        } else if (words.Accept("sound")) {
            parts.sounds.push_back(TextOf(words));
        } else if (words.Accept("state")) {
            character.states.push_back(StateOf(words));
        } else if (words.Accept("animation")) {
            character.animations.push_back(AnimationOf(statement, words));
        }
        words.Finish();
    }
    if (colors != kColors)
        throw SourceError(0, "a character has 256 colours, not " + std::to_string(colors));
    if (character.width == 0)
        throw SourceError(0, "'size' is missing");
    return parts;
}

} // namespace voxtrel::acsc
