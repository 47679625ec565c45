#include "tools/acsc/compiler.h"

#include "agent/acs/reader.h"
#include "agent/acs/writer.h"
#include "tests/tools/sample_source.h"
#include "tools/acsc/compose.h"
#include "tools/acsc/sheet.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace voxtrel::acsc {

namespace {

using agent::acs::CharacterFile;
using agent::acs::Frame;
using agent::acs::Mouth;

// Flat shapes without outline: a red body from 10,10 to 30,30, mouths in it, and a star at the top left.
constexpr const char* kDrawing = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 40 40">
<rect id="body" x="10" y="10" width="20" height="20" fill="#c83214"/>
<rect id="head" x="14" y="4" width="12" height="6" fill="#1464c8"/>
<rect id="mouth" x="18" y="15" width="4" height="2" fill="#000040"/>
<rect id="m_open" x="17" y="14" width="6" height="4" fill="#000040"/>
<rect id="m_wide" x="16" y="14" width="8" height="6" fill="#000040"/>
<rect id="star" x="2" y="2" width="6" height="6" fill="#f0dc28"/>
</svg>)";

class CompilerTest : public testing::Test {
protected:
    void SetUp() override
    {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::temp_directory_path() / (std::string("voxtrel-acsc-") + info->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
        Write("figure.svg", kDrawing);
    }

    void TearDown() override { std::filesystem::remove_all(folder_); }

    void Write(const std::string& name, const std::string& text) const
    {
        std::ofstream(folder_ / name, std::ios::binary) << text;
    }

    // The character with these poses and animations.
    CharacterFile Compile(const std::string& more) const
    {
        Write("character.txt", samples::Source(more));
        auto compiled = CompileCharacter(folder_);
        if (const auto* error = std::get_if<CompileError>(&compiled)) {
            ADD_FAILURE() << error->message;
            return {};
        }
        return std::get<CharacterFile>(std::move(compiled));
    }

    // The message without the folder in front.
    std::string ErrorOf(const std::string& text) const
    {
        Write("character.txt", text);
        const auto compiled = CompileCharacter(folder_);
        const auto* error = std::get_if<CompileError>(&compiled);
        return error ? error->message.substr(folder_.string().size() + 1) : "";
    }

    std::filesystem::path folder_;
};

constexpr Rgba kRed{0xC8, 0x32, 0x14, 255};
constexpr Rgba kBlue{0x14, 0x64, 0xC8, 255};
constexpr Rgba kDark{0x00, 0x00, 0x40, 255};
constexpr Rgba kYellow{0xF0, 0xDC, 0x28, 255};
constexpr Rgba kNothing{};

} // namespace

TEST_F(CompilerTest, DrawsFlatColoursExactlyWithAHardEdge)
{
    const CharacterFile character = Compile("animation A { frame rest }\n");
    const Pixels picture = ComposeFrame(character, character.animations[0].frames[0]);
    EXPECT_EQ(picture.At(10, 10), kRed);
    EXPECT_EQ(picture.At(29, 29), kRed);
    EXPECT_EQ(picture.At(9, 20), kNothing);
    EXPECT_EQ(picture.At(30, 20), kNothing);
    EXPECT_EQ(picture.At(20, 6), kBlue);
    EXPECT_EQ(picture.At(18, 15), kDark);
    EXPECT_EQ(picture.At(4, 4), kNothing); // the star is hidden
}

TEST_F(CompilerTest, DrawsMorePixelsToAUnitWhenToldTo)
{
    const CharacterFile character =
        Compile("detail 2\npose stars empty { star show }\nanimation A { frame rest + stars at 10,10 }\n");
    EXPECT_EQ(character.width, 80);
    EXPECT_EQ(character.height, 80);
    const Pixels picture = ComposeFrame(character, character.animations[0].frames[0]);
    EXPECT_EQ(picture.At(20, 20), kRed);
    EXPECT_EQ(picture.At(59, 59), kRed);
    EXPECT_EQ(picture.At(19, 40), kNothing);
    EXPECT_EQ(picture.At(60, 40), kNothing);
    EXPECT_EQ(picture.At(40, 12), kBlue);
    EXPECT_EQ(picture.At(30, 30), kYellow);
}

TEST_F(CompilerTest, CropsPicturesToTheirContent)
{
    const CharacterFile character = Compile("animation A { frame rest }\n");
    const Frame& frame = character.animations[0].frames[0];
    ASSERT_EQ(frame.images.size(), 1u);
    EXPECT_EQ(frame.images[0].x, 10);
    EXPECT_EQ(frame.images[0].y, 4);
    const agent::acs::Image image = character.images->Decode(0);
    EXPECT_EQ(image.width, 20);
    EXPECT_EQ(image.height, 26);
}

TEST_F(CompilerTest, StoresEqualPicturesOnceWhereverTheyAre)
{
    const CharacterFile character = Compile("pose aside { body move 3,2 }\npose again { body move 0,0 }\n"
                                            "animation A {\nframe rest\nframe aside\nframe again\n}\n");
    EXPECT_EQ(character.images->Count(), 1u);
    EXPECT_EQ(character.animations[0].frames[1].images[0].x, 13);
    EXPECT_EQ(character.animations[0].frames[1].images[0].y, 6);
}

TEST_F(CompilerTest, TurnsPartsTogetherAboutTheirPivot)
{
    const CharacterFile character = Compile("pose lying { body rotate 90 }\nanimation A { frame lying }\n");
    const Pixels picture = ComposeFrame(character, character.animations[0].frames[0]);
    // The body's pivot is at 20,30: its square comes to lie to the right of it, the head further right.
    EXPECT_EQ(picture.At(25, 22), kRed);
    EXPECT_EQ(picture.At(39, 39), kRed);
    EXPECT_EQ(picture.At(19, 25), kNothing);
}

TEST_F(CompilerTest, TurnsAFigureRoundThroughAFrameInWhichNothingIsLeftOfIt)
{
    // Half way between 1 and -1 the sum is not exactly 0, and what is turned besides has no way back.
    const CharacterFile character = Compile("pose tilted {\nhead rotate 20\nmouth rotate -40\n}\n"
                                            "pose round from tilted { body scale -1,1 }\n"
                                            "animation A {\nframe tilted\ntween to round steps 4\n}\n");
    ASSERT_EQ(character.animations.size(), 1u);
    const auto& frames = character.animations[0].frames;
    ASSERT_EQ(frames.size(), 5u);
    EXPECT_EQ(ComposeFrame(character, frames[2]).At(20, 25), kNothing);
    EXPECT_EQ(ComposeFrame(character, frames[4]).At(20, 25), kRed);
}

TEST_F(CompilerTest, GivesASpeakingFrameItsSevenMouths)
{
    const CharacterFile character =
        Compile("pose aside { body move 3,2 }\nanimation A { frame aside mouths talk }\n");
    const Frame& frame = character.animations[0].frames[0];
    ASSERT_EQ(frame.mouths.size(), 7u);
    const Pixels closed = ComposeFrame(character, frame, Mouth::Closed);
    const Pixels open = ComposeFrame(character, frame, Mouth::Open);
    EXPECT_EQ(closed.data, ComposeFrame(character, frame).data);
    EXPECT_EQ(closed.At(19, 16), kRed);
    EXPECT_EQ(open.At(19, 16), kDark); // the wide mouth, moved along with the body
    EXPECT_EQ(open.At(26, 21), kDark);
    EXPECT_EQ(open.At(27, 22), kRed);
}

TEST_F(CompilerTest, PutsTheLaterLayerOnTop)
{
    const CharacterFile character =
        Compile("pose stars empty { star show }\nanimation A { frame rest + stars at 10,10 }\n");
    const Frame& frame = character.animations[0].frames[0];
    ASSERT_EQ(frame.images.size(), 2u);
    EXPECT_EQ(frame.images[0].x, 12);
    const Pixels picture = ComposeFrame(character, frame);
    EXPECT_EQ(picture.At(13, 13), kYellow);
    EXPECT_EQ(picture.At(20, 20), kRed);
}

TEST_F(CompilerTest, AnEmptyPictureIsAFrameWithoutImages)
{
    const CharacterFile character =
        Compile("pose gone empty { }\nanimation A {\nframe gone duration 20\nframe rest\n}\n");
    EXPECT_TRUE(character.animations[0].frames[0].images.empty());
    EXPECT_EQ(character.animations[0].frames[0].duration, 20);
}

TEST_F(CompilerTest, WhatItMakesIsReadBack)
{
    const CharacterFile character =
        Compile("animation RestPose { frame rest mouths talk }\nstate Speaking RestPose\n");
    const agent::acs::ReadOutcome read = agent::acs::ReadCharacterFile(WriteCharacterFile(character));
    ASSERT_TRUE(read.result.Ok());
    EXPECT_EQ(read.character.animations, character.animations);
    EXPECT_EQ(read.character.palette, character.palette);
}

TEST_F(CompilerTest, StoresSoundsFromFilesAndFromTones)
{
    Write("ding.wav", "RIFF and more");
    const CharacterFile character = Compile("sound dong {\nbell 700 length 20\n}\n"
                                            "animation A {\nframe rest sound ding.wav\n"
                                            "frame left sound dong\nframe rest sound dong\n}\n");
    ASSERT_EQ(character.sounds->Count(), 2u);
    const std::vector<std::uint8_t> ding = character.sounds->Read(0);
    EXPECT_EQ(std::string(ding.begin(), ding.end()), "RIFF and more");
    EXPECT_EQ(character.sounds->Read(1).size(), 44u + 2 * 3200);
    EXPECT_EQ(character.animations[0].frames[2].sound, 1);
}

TEST_F(CompilerTest, TellsMistakesWithFileAndLine)
{
    EXPECT_EQ(ErrorOf("size 40,40\npose a { b rotate 3 }\n"), "character.txt:2: no part is called 'b'");
    EXPECT_EQ(ErrorOf(samples::Source("part hat\nanimation A { frame rest }\n")),
              "character.txt:29: no drawing has an element with the id 'hat'");
    EXPECT_EQ(ErrorOf(samples::Source("drawing gone.svg\nanimation A { frame rest }\n")).substr(0, 37),
              "character.txt: the drawing 'gone.svg'");
    Write("figure2.svg", kDrawing);
    EXPECT_EQ(ErrorOf(samples::Source("drawing figure2.svg\nanimation A { frame rest }\n")),
              "character.txt:7: 'body' is in 'figure.svg' and in 'figure2.svg'");
    EXPECT_EQ(ErrorOf(samples::Source("animation A { frame rest sound gone.wav }\n")),
              "character.txt: the sound 'gone.wav' cannot be read");
}

TEST_F(CompilerTest, DrawsASheet)
{
    const CharacterFile character = Compile("animation A {\nframe left\nframe rest mouths talk\n}\n");
    const std::filesystem::path png = folder_ / "sheet.png";
    EXPECT_EQ(DrawSheet(character, {L"a", 1}, png.string()), "");
    EXPECT_GT(std::filesystem::file_size(png), 500u);
    EXPECT_EQ(DrawSheet(character, {L"b", 1}, png.string()), "there is no such animation");
}

} // namespace voxtrel::acsc
