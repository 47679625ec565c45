// The description of a character.
//
// Whether voice and balloon are there is not taken from the flags, whose meaning differs between compilers:
// each of the four combinations is tried, and one fits when palette, tray icon and states follow properly and
// end where the block ends. If more than one fits, the flags decide. Likewise the order of red, green and
// blue is found by the static colours of the palette; where there are none, a balloon may tell.

#include "agent/acs/character_info.h"

#include "agent/acs/format.h"
#include "agent/acs/guid.h"
#include "agent/acs/static_palette.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace voxtrel::agent::acs {

namespace {

using RawColor = std::array<std::uint8_t, 4>;

enum class ColorOrder { BlueFirst, RedFirst };

struct FixedHead {
    FormatVersion version;
    Locator localized;
    std::string guid;
    int width = 0;
    int height = 0;
    std::uint8_t transparentIndex = 0;
    std::uint32_t flags = 0;
    AnimationSetVersion animationSet;
};

struct BalloonColors {
    RawColor text{}, background{}, border{};
};

// What follows the fixed head, with the colours not yet understood.
struct Body {
    std::optional<VoiceInfo> voice;
    std::optional<BalloonInfo> balloon;
    BalloonColors balloonColors;
    std::vector<RawColor> palette;
    std::optional<TrayIcon> trayIcon;
    std::vector<State> states;
};

std::string ReadGuid(ByteCursor& cursor)
{
    GuidBytes bytes{};
    const std::span<const std::uint8_t> read = cursor.Bytes(bytes.size());
    std::copy(read.begin(), read.end(), bytes.begin());
    return GuidText(bytes);
}

RawColor ReadColor(ByteCursor& cursor)
{
    RawColor color{};
    const std::span<const std::uint8_t> read = cursor.Bytes(color.size());
    std::copy(read.begin(), read.end(), color.begin());
    return color;
}

FixedHead ReadFixedHead(ByteCursor& cursor)
{
    FixedHead head;
    head.version.minor = cursor.U16();
    head.version.major = cursor.U16();
    head.localized = cursor.Place();
    head.guid = ReadGuid(cursor);
    head.width = cursor.U16();
    head.height = cursor.U16();
    head.transparentIndex = cursor.U8();
    head.flags = cursor.U32();
    head.animationSet.major = cursor.U16();
    head.animationSet.minor = cursor.U16();
    return head;
}

VoiceInfo ReadVoice(ByteCursor& cursor)
{
    VoiceInfo voice;
    voice.engineId = ReadGuid(cursor);
    voice.modeId = ReadGuid(cursor);
    voice.speed = cursor.U32();
    voice.pitch = cursor.U16();
    if (cursor.Bool()) {
        VoiceTraits& traits = voice.traits.emplace();
        traits.language = cursor.U16();
        traits.dialect = cursor.Text();
        traits.gender = cursor.U16();
        traits.age = cursor.U16();
        traits.style = cursor.Text();
    }
    return voice;
}

BalloonInfo ReadBalloon(ByteCursor& cursor, BalloonColors& colors)
{
    BalloonInfo balloon;
    balloon.lines = cursor.U8();
    balloon.charactersPerLine = cursor.U8();
    colors.text = ReadColor(cursor);
    colors.background = ReadColor(cursor);
    colors.border = ReadColor(cursor);
    balloon.fontName = cursor.Text();
    balloon.fontHeight = cursor.I32();
    balloon.fontWeight = cursor.I32();
    balloon.italic = cursor.Bool();
    cursor.U8();
    return balloon;
}

std::vector<std::uint8_t> ReadBlock(ByteCursor& cursor)
{
    const std::span<const std::uint8_t> block = cursor.Bytes(cursor.U32());
    return {block.begin(), block.end()};
}

std::optional<TrayIcon> ReadTrayIcon(ByteCursor& cursor)
{
    const std::uint8_t present = cursor.U8();
    if (present > 1)
        cursor.Fail();
    if (present != 1)
        return std::nullopt;
    TrayIcon icon;
    icon.mask = ReadBlock(cursor);
    icon.colors = ReadBlock(cursor);
    return icon;
}

std::vector<State> ReadStates(ByteCursor& cursor)
{
    constexpr std::size_t kSmallestState = 6, kSmallestName = 4;
    std::vector<State> states;
    const std::size_t count = cursor.Count(cursor.U16(), kSmallestState);
    for (std::size_t i = 0; i < count && cursor.Ok(); ++i) {
        State& state = states.emplace_back();
        state.name = cursor.Text();
        const std::size_t names = cursor.Count(cursor.U16(), kSmallestName);
        for (std::size_t n = 0; n < names && cursor.Ok(); ++n)
            state.animations.push_back(cursor.Text());
    }
    return states;
}

// Nothing when the block cannot be read this way up to one of its proper ends: its own, or the names and
// descriptions.
std::optional<Body> ReadBody(ByteCursor cursor, bool withVoice, bool withBalloon,
                             std::optional<std::size_t> localized)
{
    Body body;
    if (withVoice)
        body.voice = ReadVoice(cursor);
    if (withBalloon)
        body.balloon = ReadBalloon(cursor, body.balloonColors);

    const std::size_t colors = cursor.Count(cursor.U32(), sizeof(RawColor));
    if (colors < 1 || colors > kPaletteSize)
        return std::nullopt;
    for (std::size_t i = 0; i < colors; ++i)
        body.palette.push_back(ReadColor(cursor));
    body.trayIcon = ReadTrayIcon(cursor);
    body.states = ReadStates(cursor);

    const bool atEnd = cursor.Left() == 0 || cursor.Position() == localized;
    if (!cursor.Ok() || !atEnd)
        return std::nullopt;
    return body;
}

// Larger for a combination that the flags speak for.
int FlagsInFavour(std::uint32_t flags, bool withVoice, bool withBalloon)
{
    const bool balloonByFlags = (flags & kFlagBalloonOn) != 0 && (flags & kFlagBalloonOff) == 0;
    int points = 0;
    points += withBalloon == balloonByFlags ? 4 : 0;
    points += withVoice == ((flags & kFlagSpokenVoice) != 0) ? 2 : 0;
    points += withVoice == ((flags & kFlagVoice) != 0) ? 1 : 0;
    return points;
}

std::optional<Body> ReadLikeliestBody(const ByteCursor& cursor, const FixedHead& head, const Locator& place)
{
    std::optional<std::size_t> localized; // in this block
    if (head.localized.offset >= place.offset)
        localized = head.localized.offset - place.offset;
    std::optional<Body> likeliest;
    int most = -1;
    for (const bool withVoice : {true, false}) {
        for (const bool withBalloon : {true, false}) {
            const int points = FlagsInFavour(head.flags, withVoice, withBalloon);
            if (points <= most)
                continue;
            if (auto body = ReadBody(cursor, withVoice, withBalloon, localized)) {
                likeliest = std::move(body);
                most = points;
            }
        }
    }
    return likeliest;
}

Color Ordered(const RawColor& raw, ColorOrder order)
{
    if (order == ColorOrder::RedFirst)
        return {raw[0], raw[1], raw[2]};
    return {raw[2], raw[1], raw[0]};
}

// Nothing where the palette does not tell.
std::optional<ColorOrder> OrderOf(const std::vector<RawColor>& palette)
{
    if (palette.size() != kPaletteSize)
        return std::nullopt;
    int blueFirst = 0, redFirst = 0;
    for (std::size_t i = 0; i < kPaletteSize; ++i) {
        if (!IsStaticEntry(i))
            continue;
        blueFirst += Ordered(palette[i], ColorOrder::BlueFirst) == StaticPalette()[i] ? 1 : 0;
        redFirst += Ordered(palette[i], ColorOrder::RedFirst) == StaticPalette()[i] ? 1 : 0;
    }
    if (redFirst == blueFirst)
        return std::nullopt;
    return redFirst > blueFirst ? ColorOrder::RedFirst : ColorOrder::BlueFirst;
}

// Balloons are cream far more often than light cyan, which is cream read the wrong way round.
bool IsPaleCyan(const Color& color)
{
    constexpr int kPale = 192, kBright = 240;
    return color.red >= kPale && color.red < color.blue && color.green >= kBright && color.blue >= kBright;
}

void SetColors(CharacterFile& character, const Body& body)
{
    const std::optional<ColorOrder> known = OrderOf(body.palette);
    const ColorOrder order = known.value_or(ColorOrder::BlueFirst);
    for (std::size_t i = 0; i < body.palette.size(); ++i)
        character.palette[i] = Ordered(body.palette[i], order);
    if (!character.balloon)
        return;
    const BalloonColors& raw = body.balloonColors;
    const bool turned = !known && IsPaleCyan(Ordered(raw.background, order));
    const ColorOrder balloonOrder = turned ? ColorOrder::RedFirst : order;
    character.balloon->text = Ordered(raw.text, balloonOrder);
    character.balloon->background = Ordered(raw.background, balloonOrder);
    character.balloon->border = Ordered(raw.border, balloonOrder);
}

// The names and descriptions that can be read; a damaged list gives those before the damage.
std::vector<LocalizedInfo> ReadLocalized(std::span<const std::uint8_t> block)
{
    constexpr std::size_t kSmallestInfo = 14;
    std::vector<LocalizedInfo> localized;
    ByteCursor cursor(block);
    const std::size_t count = cursor.Count(cursor.U16(), kSmallestInfo);
    for (std::size_t i = 0; i < count; ++i) {
        LocalizedInfo info;
        info.language = cursor.U16();
        info.name = cursor.Text();
        info.description = cursor.Text();
        info.extraData = cursor.Text();
        if (!cursor.Ok())
            break;
        localized.push_back(std::move(info));
    }
    return localized;
}

} // namespace

std::optional<FormatVersion> ReadFormatVersion(std::span<const std::uint8_t> block)
{
    ByteCursor cursor(block);
    const FixedHead head = ReadFixedHead(cursor);
    if (!cursor.Ok())
        return std::nullopt;
    return head.version;
}

std::optional<CharacterFile> ReadCharacterInfo(const FileSource& file, const Locator& place,
                                               std::span<const std::uint8_t> block)
{
    ByteCursor cursor(block);
    const FixedHead head = ReadFixedHead(cursor);
    if (!cursor.Ok() || head.width == 0 || head.height == 0 || head.width > kLargestImageSide ||
        head.height > kLargestImageSide)
        return std::nullopt;
    std::optional<Body> body = ReadLikeliestBody(cursor, head, place);
    if (!body)
        return std::nullopt;

    CharacterFile character;
    character.guid = head.guid;
    character.width = head.width;
    character.height = head.height;
    character.transparentIndex = head.transparentIndex;
    character.standardAnimationSet = (head.flags & kFlagStandardSet) != 0;
    character.voice = std::move(body->voice);
    character.balloon = std::move(body->balloon);
    if (character.balloon) {
        character.balloon->sizeToText = (head.flags & kFlagSizeToText) != 0;
        character.balloon->autoHide = (head.flags & kFlagAutoHideOff) == 0;
        character.balloon->autoPace = (head.flags & kFlagAutoPaceOff) == 0;
    }
    SetColors(character, *body);
    character.animationSet = head.animationSet;
    character.trayIcon = std::move(body->trayIcon);
    character.states = std::move(body->states);
    if (const auto localized = file.Read(head.localized))
        character.localized = ReadLocalized(*localized);
    return character;
}

} // namespace voxtrel::agent::acs
