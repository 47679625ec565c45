#include "agent/acs/reader.h"
#include "agent/acs/writer.h"
#include "tests/agent/acs/sample_characters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace voxtrel::agent::acs {

namespace {

using Bytes = std::vector<std::uint8_t>;

// Looks at everything that a character player would, and checks the promises that it relies on.
void ExpectUsable(const CharacterFile& character)
{
    const std::size_t images = character.images->Count();
    for (std::size_t i = 0; i < images; ++i) {
        const Image image = character.images->Decode(i);
        ASSERT_EQ(image.pixels.size(),
                  static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
    }
    for (const Animation& animation : character.animations) {
        const int frames = static_cast<int>(animation.frames.size());
        for (const Frame& frame : animation.frames) {
            for (const FrameImage& image : frame.images)
                ASSERT_LT(image.image, images);
            for (const MouthOverlay& mouth : frame.mouths)
                ASSERT_LT(mouth.image, images);
            for (const Branch& branch : frame.branches)
                ASSERT_LT(branch.target, frames);
            ASSERT_LT(frame.exitFrame.value_or(0), std::max(frames, 1));
            ASSERT_GE(frame.exitFrame.value_or(0), 0);
            ASSERT_LT(frame.sound.value_or(-1), static_cast<int>(character.sounds->Count()));
        }
    }
}

void ExpectUsableOrASentence(const Bytes& bytes)
{
    const ReadOutcome read = ReadCharacterFile(bytes);
    if (read.result.Ok())
        ExpectUsable(read.character);
    else
        EXPECT_TRUE(read.result.description.ends_with(L'.'));
}

} // namespace

TEST(DamagedFile, CutAtAnyByteIsRefusedWithASentence)
{
    const Bytes whole = WriteCharacterFile(samples::Small());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const ReadOutcome read =
            ReadCharacterFile({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
        ASSERT_FALSE(read.result.Ok()) << size;
        ASSERT_TRUE(read.result.description.ends_with(L'.')) << size;
    }
}

TEST(DamagedFile, AnySingleByteMayBeAnything)
{
    const Bytes whole = WriteCharacterFile(samples::Small());
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const std::uint8_t value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            Bytes damaged = whole;
            damaged[at] = value;
            ExpectUsableOrASentence(damaged);
        }
    }
}

TEST(DamagedFile, RandomBitsMayBeTurned)
{
    std::mt19937 random(11);
    std::vector<Bytes> characters;
    for (std::uint32_t seed = 1; seed <= 25; ++seed)
        characters.push_back(WriteCharacterFile(samples::Random(seed)));
    for (std::size_t i = 0; i < 1500; ++i) {
        Bytes bytes = characters[i % characters.size()];
        for (std::uint32_t flips = 1 + random() % 12; flips > 0; --flips)
            bytes[random() % bytes.size()] ^= static_cast<std::uint8_t>(1u << (random() % 8));
        ExpectUsableOrASentence(bytes);
    }
}

// Many animations that all lead to the same large block would make a small file fill the memory.
TEST(DamagedFile, SharedBlocksAreReadOnlyAFewTimes)
{
    CharacterFile character = samples::Small();
    character.animations[0].frames.assign(3000, character.animations[0].frames[0]);
    character.animations.resize(1);
    for (int i = 0; i < 500; ++i)
        character.animations.push_back({L"", Transition::None, L"", {}, false});
    Bytes bytes = WriteCharacterFile(character);
    const auto u32 = [&](std::size_t at) {
        return bytes[at] + 256u * bytes[at + 1] + 65536u * bytes[at + 2] + 16777216u * bytes[at + 3];
    };
    const std::size_t firstPlace = u32(12) + 4 + 4 + 2 * 9;
    for (std::size_t i = 0; i < 500; ++i)
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(firstPlace), 8,
                    bytes.begin() + static_cast<std::ptrdiff_t>(firstPlace + 8 + 12 * i + 4));

    const ReadOutcome read = ReadCharacterFile(bytes);
    ASSERT_TRUE(read.result.Ok());
    std::size_t frames = 0;
    for (const Animation& animation : read.character.animations)
        frames += animation.frames.size();
    EXPECT_GE(frames, 6000u);
    EXPECT_LE(frames, 20000u);
}

} // namespace voxtrel::agent::acs
