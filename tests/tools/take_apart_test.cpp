#include "tools/acsc/take_apart.h"

#include "agent/acs/file_images.h"
#include "agent/acs/reader.h"
#include "agent/acs/writer.h"
#include "tools/acsc/frames_text.h"
#include "tools/acsc/statement.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>

namespace voxtrel::acsc {

namespace {

using agent::acs::CharacterFile;
using agent::acs::Frame;
using agent::acs::Image;
using agent::acs::Mouth;

// With whatever is unusual: texts that need care, an image that nothing shows, one without pixels, negative
// places.
CharacterFile Unusual()
{
    CharacterFile character;
    character.guid = "{5B9E1C46-2F0D-4C57-9C3B-6B3F1B0E7A11}";
    character.width = 40;
    character.height = 30;
    character.transparentIndex = 3;
    for (std::size_t i = 0; i < 256; ++i)
        character.palette[i] = {static_cast<std::uint8_t>(i / 2), 10, 20}; // no colour is alone
    character.localized = {{0x0409, L"100 % \"quoted\"", L"two\nlines", L"\u00E4 // {}"},
                           {0x0C0A, L"", L"", L""}};
    character.voice = agent::acs::VoiceInfo{
        "{CA141FD0-AC7F-11D1-97A3-006008273000}", "{CA141FD0-AC7F-11D1-97A3-006008273001}", 170, 0xFFFF,
        agent::acs::VoiceTraits{0x0809, L"the \"north\"", 1, 70, L"calm"}};
    character.animationSet = {2, 7};
    character.trayIcon = {{40, 0, 0, 1}, {41, 13, 10, 255}};
    character.balloon.emplace();
    character.balloon->background = {200, 240, 255};
    character.balloon->italic = true;
    character.images = std::make_shared<agent::acs::MemoryImages>(
        std::vector<Image>{{2, 2, {3, 4, 5, 255}}, {}, {3, 1, {0, 1, 2}}});
    character.sounds = std::make_shared<agent::acs::MemoryWaves>(
        std::vector<std::vector<std::uint8_t>>{{'R', 'I', 'F', 'F', 0, 255, 10, 13}, {}});
    Frame frame;
    frame.duration = 12;
    frame.images = {{2, -5, 6}, {0, 1, 1}};
    frame.sound = 1;
    frame.exitFrame = 0;
    frame.branches = {{1, 30}, {0, 70}};
    frame.mouths = {{Mouth::Narrow, true, 0, -1, 2}, {Mouth::Closed, false, 2, 3, 4}};
    character.animations = {
        {L"A b", agent::acs::Transition::ReturnAnimation, L"ANOTHER", {frame, Frame{}}, false},
        {L"Another", agent::acs::Transition::ExitBranches, L"", {frame, Frame{}}, false},
        {L"Empty", agent::acs::Transition::None, L"", {}, false}};
    character.states = {{L"SPEAKING", {L"A b", L"Another"}}, {L"HIDING", {}}};
    return character;
}

class TakeApartTest : public testing::Test {
protected:
    void SetUp() override
    {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        folder_ =
            std::filesystem::temp_directory_path() / (std::string("voxtrel-take-apart-") + info->name());
        std::filesystem::remove_all(folder_);
        ASSERT_EQ(TakeApart(Unusual(), folder_), "");
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string Mistake() const
    {
        const auto made = PutTogether(folder_);
        const auto* error = std::get_if<CompileError>(&made);
        return error != nullptr ? error->message : std::string();
    }

    std::filesystem::path folder_;
};

TEST_F(TakeApartTest, ComesBackToTheLastByte)
{
    const auto made = PutTogether(folder_);
    ASSERT_EQ(Mistake(), "");
    EXPECT_TRUE(WriteCharacterFile(std::get<CharacterFile>(made)) == WriteCharacterFile(Unusual()));
}

TEST_F(TakeApartTest, KeepsWhatThisProgramDoesNotUse)
{
    const auto made = PutTogether(folder_);
    ASSERT_EQ(Mistake(), "");
    const agent::acs::ReadOutcome read =
        agent::acs::ReadCharacterFile(WriteCharacterFile(std::get<CharacterFile>(made)));
    ASSERT_TRUE(read.result.Ok());
    EXPECT_TRUE(read.character.voice == Unusual().voice);
    EXPECT_TRUE(read.character.trayIcon == Unusual().trayIcon);
    EXPECT_TRUE(read.character.animationSet == Unusual().animationSet);
    EXPECT_TRUE(read.character.palette == Unusual().palette);
}

TEST_F(TakeApartTest, SaysThatTheTrayIconIsMissing)
{
    std::filesystem::remove(folder_ / "tray-mask.dib");
    EXPECT_NE(Mistake().find("tray-mask.dib"), std::string::npos) << Mistake();
}

TEST_F(TakeApartTest, KeepsWhatTheFileFormatDoesNot)
{
    const auto made = PutTogether(folder_);
    ASSERT_EQ(Mistake(), "");
    const auto& character = std::get<CharacterFile>(made);
    EXPECT_TRUE(character.palette == Unusual().palette);
    EXPECT_TRUE(character.localized == Unusual().localized);
    EXPECT_TRUE(character.animations == Unusual().animations);
    EXPECT_EQ(character.images->Decode(0), Unusual().images->Decode(0));
    EXPECT_EQ(character.sounds->Read(0), Unusual().sounds->Read(0));
}

TEST_F(TakeApartTest, SaysWhichPictureIsMissingOrIsNone)
{
    std::ofstream(folder_ / "image-0002.png") << "nothing";
    EXPECT_NE(Mistake().find("image-0002.png"), std::string::npos) << Mistake();
    std::filesystem::remove(folder_ / "image-0000.png");
    EXPECT_NE(Mistake().find("image-0000.png"), std::string::npos) << Mistake();
}

TEST_F(TakeApartTest, SaysInWhichLineAMistakeIs)
{
    std::ofstream(folder_ / "frames.txt", std::ios::app)
        << "\nanimation \"X\" {\n    frame much {\n    }\n}\n";
    EXPECT_NE(Mistake().find("'much'"), std::string::npos) << Mistake();
    EXPECT_NE(Mistake().find("frames.txt:"), std::string::npos) << Mistake();
}

TEST(ParseFramesText, WantsAllColoursAndASize)
{
    EXPECT_THROW(static_cast<void>(ParseFramesText("size 10,10\ncolors #000000\n")), SourceError);
    EXPECT_THROW(static_cast<void>(ParseFramesText("")), SourceError);
}

TEST(ParseFramesText, RefusesEveryCutTextOrReadsItWithoutHarm)
{
    const std::string text = WriteFramesText({Unusual(), {"a.png", "", "c.png"}, {"s.wav", "t.wav"}});
    int refused = 0;
    for (std::size_t size = 0; size < text.size(); ++size) {
        try {
            static_cast<void>(ParseFramesText(std::string_view(text).substr(0, size)));
        } catch (const SourceError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 2000);
}

} // namespace

} // namespace voxtrel::acsc
