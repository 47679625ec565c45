#include "agent/acs/reader.h"

#include "agent/acs/format.h"
#include "agent/acs/writer.h"
#include "tests/agent/acs/sample_characters.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace voxtrel::agent::acs {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kInfoLocator = 4;
constexpr std::size_t kAnimationLocator = 12;
constexpr std::size_t kImageLocator = 20;
constexpr std::size_t kFixedHead = 41;
constexpr std::size_t kMajorInInfo = 2;
constexpr std::size_t kFlagsInInfo = 33;

std::uint32_t U32At(const Bytes& bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(bytes[at] | (bytes[at + 1] << 8) | (bytes[at + 2] << 16)) |
           (std::uint32_t{bytes[at + 3]} << 24);
}

void PutU32(Bytes& bytes, std::size_t at, std::uint32_t value)
{
    for (std::size_t i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

std::size_t InfoOf(const Bytes& bytes) { return U32At(bytes, kInfoLocator); }

void SetFlags(Bytes& bytes, std::uint32_t flags) { PutU32(bytes, InfoOf(bytes) + kFlagsInInfo, flags); }

// Red, green and blue turned round in four-byte colours.
void TurnColors(Bytes& bytes, std::size_t first, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        std::swap(bytes[first + 4 * i], bytes[first + 4 * i + 2]);
}

struct Presence {
    samples::Voice voice;
    samples::Balloon balloon;
};

constexpr Presence kPresences[] = {
    {samples::Voice::Absent, samples::Balloon::Absent},
    {samples::Voice::Absent, samples::Balloon::Present},
    {samples::Voice::Present, samples::Balloon::Absent},
    {samples::Voice::Present, samples::Balloon::Present},
};

} // namespace

// The same bits mean different things to different compilers.
TEST(ReadCharacterFile, FindsVoiceAndBalloonWhateverTheFlagsSay)
{
    for (const Presence& presence : kPresences) {
        const CharacterFile written = samples::Small(presence.voice, presence.balloon);
        for (const std::uint32_t flags : {0u, 0x10u, 0x20u, 0x30u, 0x100u, 0x200u, 0x230u, 0x110u, 0x300u}) {
            SCOPED_TRACE(flags);
            Bytes bytes = WriteCharacterFile(written);
            SetFlags(bytes, flags);
            const ReadOutcome read = ReadCharacterFile(bytes);
            ASSERT_TRUE(read.result.Ok());
            EXPECT_TRUE(read.character.voice == written.voice);
            EXPECT_EQ(read.character.balloon.has_value(), written.balloon.has_value());
            EXPECT_TRUE(read.character.palette == written.palette);
            EXPECT_TRUE(read.character.states == written.states);
        }
    }
}

TEST(ReadCharacterFile, TakesTheBalloonStyleFromTheFlags)
{
    Bytes bytes = WriteCharacterFile(samples::Small());
    SetFlags(bytes, 0x10230);
    const ReadOutcome plain = ReadCharacterFile(bytes);
    EXPECT_TRUE(plain.character.balloon->sizeToText);
    EXPECT_TRUE(plain.character.balloon->autoHide);
    EXPECT_TRUE(plain.character.balloon->autoPace);
    SetFlags(bytes, 0x60230);
    const ReadOutcome inverted = ReadCharacterFile(bytes);
    EXPECT_FALSE(inverted.character.balloon->sizeToText);
    EXPECT_FALSE(inverted.character.balloon->autoHide);
    EXPECT_FALSE(inverted.character.balloon->autoPace);
}

TEST(ReadCharacterFile, TellsTheOrderOfColoursByTheStaticOnes)
{
    const CharacterFile written = samples::Small(samples::Voice::Absent, samples::Balloon::Absent);
    Bytes bytes = WriteCharacterFile(written);
    TurnColors(bytes, InfoOf(bytes) + kFixedHead + 4, kPaletteSize);
    const ReadOutcome read = ReadCharacterFile(bytes);
    ASSERT_TRUE(read.result.Ok());
    EXPECT_TRUE(read.character.palette == written.palette);
}

TEST(ReadCharacterFile, TakesBlueFirstWhenNoStaticColourIsThere)
{
    Bytes bytes = WriteCharacterFile(samples::Small(samples::Voice::Absent, samples::Balloon::Absent));
    const std::size_t palette = InfoOf(bytes) + kFixedHead + 4;
    for (std::size_t i = 0; i < 4 * kPaletteSize; i += 4)
        PutU32(bytes, palette + i, 0x00010203);
    const ReadOutcome read = ReadCharacterFile(bytes);
    ASSERT_TRUE(read.result.Ok());
    EXPECT_EQ(read.character.palette[100], (Color{1, 2, 3}));
}

TEST(ReadCharacterFile, KeepsTheBalloonColoursThatWereWritten)
{
    const std::vector<Color> backgrounds{{225, 255, 255}, {255, 255, 225}, {200, 240, 255}, {192, 240, 240},
                                         {255, 251, 240}, {0, 0, 255},     {255, 0, 0},     {1, 2, 3}};
    for (const Color& background : backgrounds) {
        CharacterFile written = samples::Small();
        written.balloon->background = background;
        written.balloon->text = {10, 20, 30};
        written.balloon->border = {200, 100, 0};
        const ReadOutcome read = ReadCharacterFile(WriteCharacterFile(written));
        ASSERT_TRUE(read.result.Ok());
        EXPECT_TRUE(read.character.balloon == written.balloon)
            << int{background.red} << " " << int{background.blue};
    }
}

// Cream is far more common than its mirror image.
TEST(ReadCharacterFile, ReadsAPaleCyanBalloonAsCreamWhereThePaletteDoesNotTellTheOrder)
{
    CharacterFile written = samples::Small(samples::Voice::Absent);
    written.balloon->background = {225, 255, 255};
    written.balloon->text = {10, 20, 30};
    Bytes bytes = WriteCharacterFile(written);
    const std::size_t balloon = InfoOf(bytes) + kFixedHead;
    const std::size_t fontUnits = U32At(bytes, balloon + 14);
    const std::size_t palette = balloon + 18 + 2 * (fontUnits + 1) + 10 + 4;
    for (std::size_t i = 0; i < 4 * kPaletteSize; i += 4)
        PutU32(bytes, palette + i, 0x00010203);
    const ReadOutcome read = ReadCharacterFile(bytes);
    ASSERT_TRUE(read.result.Ok());
    ASSERT_EQ(read.character.palette[100], (Color{1, 2, 3}));
    EXPECT_EQ(read.character.balloon->background, (Color{255, 255, 225}));
    EXPECT_EQ(read.character.balloon->text, (Color{30, 20, 10}));
}

TEST(ReadCharacterFile, AcceptsNamesAndDescriptionsInsideTheInfoBlock)
{
    const CharacterFile written = samples::Small();
    Bytes bytes = WriteCharacterFile(written);
    const std::size_t info = InfoOf(bytes);
    const std::size_t localized = U32At(bytes, info + 4);
    const std::size_t size = U32At(bytes, info + 8);
    const Bytes moved(bytes.begin() + static_cast<std::ptrdiff_t>(localized),
                      bytes.begin() + static_cast<std::ptrdiff_t>(localized + size));
    PutU32(bytes, info + 4, static_cast<std::uint32_t>(bytes.size()));
    PutU32(bytes, kInfoLocator + 4, U32At(bytes, kInfoLocator + 4) + static_cast<std::uint32_t>(size));
    bytes.insert(bytes.end(), moved.begin(), moved.end());
    const ReadOutcome read = ReadCharacterFile(bytes);
    ASSERT_TRUE(read.result.Ok());
    EXPECT_TRUE(read.character.localized == written.localized);
    EXPECT_TRUE(read.character.states == written.states);
}

TEST(ReadCharacterFile, ReadsATextWithoutItsEndingZero)
{
    CharacterFile written = samples::Small();
    written.states = {{L"SPEAKING", {L"Z"}}};
    Bytes bytes = WriteCharacterFile(written);
    // The last text of the file: without its zero the block is two bytes shorter.
    bytes.resize(bytes.size() - 2);
    PutU32(bytes, kInfoLocator + 4, U32At(bytes, kInfoLocator + 4) - 2);
    const ReadOutcome read = ReadCharacterFile(bytes);
    ASSERT_TRUE(read.result.Ok());
    EXPECT_TRUE(read.character.states == written.states);
}

TEST(ReadCharacterFile, KeepsTheOthersWhenOneAnimationIsDamaged)
{
    const CharacterFile written = samples::Small();
    Bytes bytes = WriteCharacterFile(written);
    const std::size_t list = U32At(bytes, kAnimationLocator);
    const std::size_t nameUnits = U32At(bytes, list + 4);
    const std::size_t firstPlace = list + 8 + 2 * (nameUnits + 1);
    PutU32(bytes, firstPlace, static_cast<std::uint32_t>(bytes.size() - 3));
    const ReadOutcome read = ReadCharacterFile(bytes);
    ASSERT_TRUE(read.result.Ok());
    ASSERT_EQ(read.character.animations.size(), 2u);
    EXPECT_TRUE(read.character.animations[0].damaged);
    EXPECT_EQ(read.character.animations[0].name, L"RestPose");
    EXPECT_EQ(read.character.animations[1], written.animations[1]);
}

TEST(ReadCharacterFile, GivesNoPictureForADamagedImage)
{
    const CharacterFile written = samples::Small();
    Bytes bytes = WriteCharacterFile(written);
    const std::size_t list = U32At(bytes, kImageLocator);
    const std::size_t firstImage = U32At(bytes, list + 4);
    const std::size_t secondImage = U32At(bytes, list + 4 + 12);
    bytes[firstImage + 1] = 0;     // width
    bytes[secondImage + 4] = 0x7F; // height
    const ReadOutcome read = ReadCharacterFile(bytes);
    ASSERT_TRUE(read.result.Ok());
    EXPECT_EQ(read.character.images->Decode(0), Image{});
    EXPECT_EQ(read.character.images->Decode(1), Image{});
    EXPECT_EQ(read.character.images->Decode(2), written.images->Decode(2));
    EXPECT_EQ(read.character.images->Decode(99), Image{});
}

TEST(ReadCharacterFile, LeavesOutIndexesThatLeadNowhere)
{
    CharacterFile written = samples::Small();
    Frame& frame = written.animations[0].frames[0];
    frame.images = {{77, 0, 0}, {0, 1, 1}};
    frame.sound = 3;
    frame.exitFrame = 9;
    frame.branches = {{5, 50}, {0, 50}};
    frame.mouths = {{Mouth::Closed, true, 500, 0, 0}, {Mouth::Open, true, 2, 0, 0}};
    const ReadOutcome read = ReadCharacterFile(WriteCharacterFile(written));
    ASSERT_TRUE(read.result.Ok());
    const Frame& clean = read.character.animations[0].frames[0];
    EXPECT_EQ(clean.images, (std::vector<FrameImage>{{0, 1, 1}}));
    EXPECT_FALSE(clean.sound.has_value());
    EXPECT_FALSE(clean.exitFrame.has_value());
    EXPECT_EQ(clean.branches, (std::vector<Branch>{{0, 50}}));
    // The top image is gone already, so the mouth has nothing to replace.
    EXPECT_EQ(clean.mouths, (std::vector<MouthOverlay>{{Mouth::Open, false, 2, 0, 0}}));
}

TEST(ReadCharacterFile, TellsOldCompoundFilesFromOthers)
{
    Bytes old(600, 0);
    std::copy_n(Bytes{0xD0, 0xCF, 0x11, 0xE0}.begin(), 4, old.begin());
    EXPECT_EQ(ReadCharacterFile(old).result.code, ErrorCode::FileVersionUnsupported);
    EXPECT_EQ(ReadCharacterFile({}).result.code, ErrorCode::NotACharacterFile);
    EXPECT_EQ(ReadCharacterFile(Bytes(100, 'x')).result.code, ErrorCode::NotACharacterFile);
}

TEST(ReadCharacterFile, RefusesOtherVersionsOfTheFormat)
{
    Bytes bytes = WriteCharacterFile(samples::Small());
    bytes[InfoOf(bytes) + kMajorInInfo] = 3;
    EXPECT_EQ(ReadCharacterFile(bytes).result.code, ErrorCode::FileTooNew);
    bytes[InfoOf(bytes) + kMajorInInfo] = 1;
    EXPECT_EQ(ReadCharacterFile(bytes).result.code, ErrorCode::FileVersionUnsupported);
}

TEST(ReadCharacterFile, EveryFailureHasASentence)
{
    Bytes old{0xD0, 0xCF, 0x11, 0xE0};
    Bytes cut = WriteCharacterFile(samples::Small());
    cut.resize(cut.size() / 2);
    for (const Bytes& bytes : {Bytes{}, old, cut}) {
        const ReadOutcome read = ReadCharacterFile(bytes);
        EXPECT_FALSE(read.result.Ok());
        EXPECT_TRUE(read.result.description.ends_with(L'.'));
    }
}

} // namespace voxtrel::agent::acs
