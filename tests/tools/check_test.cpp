#include "tools/acsc/check.h"

#include "agent/acs/file_images.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace voxtrel::acsc {

namespace {

using namespace agent::acs;

constexpr std::uint8_t kClear = 10;

Image Filled(int width, int height, std::uint8_t index)
{
    return {width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width * height), index)};
}

Frame Showing(std::uint32_t image, int duration = 10) { return {{{image, 2, 2}}, {}, duration, {}, {}, {}}; }

Frame Speaking(std::uint32_t image)
{
    Frame frame = Showing(image);
    for (int mouth = 0; mouth < 7; ++mouth)
        frame.mouths.push_back({static_cast<Mouth>(mouth), false, 2, 4, 4});
    return frame;
}

// Breaks no rule. Image 0 is the neutral picture, 1 another, 2 a mouth.
CharacterFile Good()
{
    CharacterFile character;
    character.width = character.height = 16;
    character.palette[20] = {200, 0, 0};
    character.palette[21] = {0, 200, 0};
    character.images = std::make_shared<MemoryImages>(
        std::vector<Image>{Filled(8, 8, 20), Filled(8, 8, 21), Filled(2, 2, 22)});
    character.animations = {
        {L"RestPose", Transition::None, L"", {Speaking(0)}, false},
        {L"Show", Transition::None, L"", {Frame{{}, {}, 10, {}, {}, {}}, Showing(0)}, false},
        {L"Hide", Transition::None, L"", {Showing(0), Frame{{}, {}, 10, {}, {}, {}}}, false},
        {L"Wave", Transition::ReturnAnimation, L"WAVERETURN", {Showing(0), Showing(1)}, false},
        {L"WaveReturn", Transition::None, L"", {Showing(0)}, false},
    };
    character.states = {{L"SPEAKING", {L"RestPose"}}, {L"SHOWING", {L"Show"}}, {L"HIDING", {L"Hide"}}};
    return character;
}

std::vector<std::string> Findings(const CharacterFile& character)
{
    std::vector<std::string> texts;
    for (const Finding& finding : CheckCharacter(character))
        texts.push_back((finding.weight == Finding::Weight::Error ? "E " : "W ") + finding.text);
    return texts;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(CheckCharacter, FindsNothingInAGoodOne) { EXPECT_EQ(Findings(Good()), Texts{}); }

TEST(CheckCharacter, MissesStatesThatAreNeeded)
{
    CharacterFile character = Good();
    character.states.pop_back();
    EXPECT_EQ(Findings(character), Texts{"E the state Hiding has no animations"});
}

TEST(CheckCharacter, MissesAnimationsThatStatesName)
{
    CharacterFile character = Good();
    character.states[0].animations.push_back(L"Nobody");
    EXPECT_EQ(Findings(character),
              Texts{"E the state SPEAKING names the animation Nobody, which is not there"});
}

TEST(CheckCharacter, WantsSevenMouthsForSpeaking)
{
    CharacterFile character = Good();
    character.animations[0].frames[0].mouths.pop_back();
    EXPECT_EQ(Findings(character),
              Texts{"E RestPose serves the state Speaking, but its last visible frame has not "
                    "all seven mouths"});
}

TEST(CheckCharacter, LooksForTheReturnAnimation)
{
    CharacterFile character = Good();
    character.animations[3].returnAnimation = L"Elsewhere";
    EXPECT_EQ(Findings(character), Texts{"E Wave returns by Elsewhere, which is not there"});
}

TEST(CheckCharacter, SeesAnimationsThatStayAwayFromTheNeutralPose)
{
    CharacterFile character = Good();
    character.animations[3].transition = Transition::None;
    EXPECT_EQ(Findings(character),
              Texts{"W Wave ends away from the neutral pose and has neither a return animation nor exits"});
}

TEST(CheckCharacter, SeesMouthsBeyondTheOutline)
{
    CharacterFile character = Good();
    character.animations[0].frames[0].mouths[3].x = 9;
    EXPECT_EQ(Findings(character),
              Texts{"W RestPose, frame 0: the mouth 'open' reaches 2 pixels beyond the outline"});
}

TEST(CheckCharacter, SeesDurationsOutOfBounds)
{
    CharacterFile character = Good();
    character.animations[4].frames.insert(character.animations[4].frames.begin(), Showing(0, 4));
    character.animations[1].frames[0].duration = 700;
    EXPECT_EQ(Findings(character), (Texts{"W Show takes 710 hundredths of a second, more than 600",
                                          "W WaveReturn has 1 frames that last less than 10 hundredths"}));
}

TEST(CheckCharacter, SeesAnimationsThatShowNothing)
{
    CharacterFile character = Good();
    character.animations[4].frames = {Frame{}};
    EXPECT_EQ(Findings(character), Texts{"E WaveReturn shows no frame"});
}

TEST(CheckCharacter, SeesBranchesOfMoreThanAHundredPercent)
{
    CharacterFile character = Good();
    character.animations[4].frames[0].branches = {{0, 60}, {0, 41}};
    EXPECT_EQ(Findings(character),
              Texts{"E WaveReturn, frame 0 has more than three branches or more than 100 % in them"});
}

TEST(CheckCharacter, SeesMouthsOnOtherFramesThanTheLast)
{
    CharacterFile character = Good();
    character.animations[0].frames.insert(character.animations[0].frames.begin(), Speaking(0));
    EXPECT_EQ(Findings(character), Texts{"W RestPose, frame 0 has mouths but is not the last visible frame"});
}

TEST(CheckCharacter, SeesDamage)
{
    CharacterFile character = Good();
    character.animations[4].damaged = true;
    character.images =
        std::make_shared<MemoryImages>(std::vector<Image>{Filled(8, 8, 20), Image{}, Filled(2, 2, 22)});
    EXPECT_EQ(Findings(character),
              (Texts{"E Wave, frame 1 shows image 1, which is damaged", "E WaveReturn is damaged"}));
}

TEST(CheckCharacter, HoldsTheStandardSetToItsWord)
{
    CharacterFile character = Good();
    character.standardAnimationSet = true;
    character.animations.push_back({L"ALERT", Transition::None, L"", {Speaking(0)}, false});
    const Texts findings = Findings(character);
    const auto has = [&](const char* text) {
        return std::find(findings.begin(), findings.end(), text) != findings.end();
    };
    EXPECT_TRUE(has("E the standard animation Think is missing"));
    EXPECT_TRUE(has("E Wave must have all seven mouths in its last visible frame"));
    EXPECT_TRUE(has("E ALERT must have a return animation or exits") ||
                has("E Alert must have a return animation or exits"));
    EXPECT_FALSE(has("E the standard animation RestPose is missing"));
}

} // namespace voxtrel::acsc
