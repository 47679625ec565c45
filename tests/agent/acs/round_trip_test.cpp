#include "agent/acs/reader.h"
#include "agent/acs/unicode.h"
#include "agent/acs/writer.h"
#include "tests/agent/acs/sample_characters.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace voxtrel::agent::acs {

namespace {

void ExpectSame(const CharacterFile& read, const CharacterFile& written)
{
    EXPECT_EQ(read.guid, written.guid);
    EXPECT_EQ(read.width, written.width);
    EXPECT_EQ(read.height, written.height);
    EXPECT_EQ(read.transparentIndex, written.transparentIndex);
    EXPECT_TRUE(read.palette == written.palette);
    EXPECT_EQ(read.standardAnimationSet, written.standardAnimationSet);
    EXPECT_TRUE(read.animationSet == written.animationSet);
    EXPECT_TRUE(read.trayIcon == written.trayIcon);
    EXPECT_TRUE(read.localized == written.localized);
    EXPECT_TRUE(read.voice == written.voice);
    EXPECT_TRUE(read.balloon == written.balloon);
    EXPECT_TRUE(read.states == written.states);
    EXPECT_TRUE(read.animations == written.animations);
    EXPECT_TRUE(samples::Images(read) == samples::Images(written));
    EXPECT_TRUE(samples::Sounds(read) == samples::Sounds(written));
}

} // namespace

TEST(WriteCharacterFile, WritesWhatTheReaderReads)
{
    const CharacterFile written = samples::Small();
    const ReadOutcome read = ReadCharacterFile(WriteCharacterFile(written));
    ASSERT_TRUE(read.result.Ok());
    ExpectSame(read.character, written);
}

TEST(WriteCharacterFile, RandomCharactersComeBack)
{
    for (std::uint32_t seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        const CharacterFile written = samples::Random(seed);
        const ReadOutcome read = ReadCharacterFile(WriteCharacterFile(written));
        ASSERT_TRUE(read.result.Ok());
        ExpectSame(read.character, written);
        if (HasFailure())
            break;
    }
}

TEST(WriteCharacterFile, KeepsAPaletteWithoutTheStaticColours)
{
    CharacterFile character = samples::Small();
    for (std::size_t i = 0; i < character.palette.size(); ++i)
        character.palette[i] = {static_cast<std::uint8_t>(i), 2, 3};
    const ReadOutcome read = ReadCharacterFile(WriteCharacterFile(character));
    ASSERT_TRUE(read.result.Ok());
    EXPECT_TRUE(read.character.palette == character.palette);
}

TEST(WriteCharacterFile, WritesStateAndReturnNamesInCapitals)
{
    CharacterFile character = samples::Small();
    character.states[0].name = L"Speaking";
    character.animations[1].returnAnimation = L"RestPose";
    const ReadOutcome read = ReadCharacterFile(WriteCharacterFile(character));
    ASSERT_TRUE(read.result.Ok());
    EXPECT_EQ(read.character.states[0].name, L"SPEAKING");
    EXPECT_EQ(read.character.animations[1].returnAnimation, L"RESTPOSE");
    EXPECT_EQ(read.character.animations[1].name, L"Wave");
}

TEST(LoadCharacterFile, ReadsAFileWithANonEnglishName)
{
    const std::wstring name =
        WideFromUtf8(std::filesystem::temp_directory_path().string()) + L"/voxtrel-\u00E4\u4E2D.acs";
    const std::filesystem::path path = PathFromWide(name);
    {
        const auto bytes = WriteCharacterFile(samples::Small());
        std::ofstream file(path, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    const CharacterFile written = samples::Small();
    {
        const ReadOutcome read = LoadCharacterFile(name);
        ASSERT_TRUE(read.result.Ok());
        ExpectSame(read.character, written);
    }
    std::filesystem::remove(path); // now that the file is closed
}

TEST(LoadCharacterFile, SaysWhichFileIsMissing)
{
    const ReadOutcome read = LoadCharacterFile(L"no-such-folder/nobody.acs");
    EXPECT_EQ(read.result.code, ErrorCode::FileNotFound);
    EXPECT_NE(read.result.description.find(L"no-such-folder/nobody.acs"), std::wstring::npos);
}

TEST(LoadCharacterFile, AFolderIsNoCharacter)
{
    const ReadOutcome read = LoadCharacterFile(L".");
    EXPECT_EQ(read.result.code, ErrorCode::FileNotFound);
}

} // namespace voxtrel::agent::acs
