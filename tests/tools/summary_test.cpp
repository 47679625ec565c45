#include "tools/acsc/summary.h"

#include "agent/acs/file_images.h"

#include <gtest/gtest.h>

#include <memory>

namespace voxtrel::acsc {

namespace {

using namespace agent::acs;

CharacterFile Sample()
{
    CharacterFile character;
    character.width = 20;
    character.height = 10;
    character.localized = {{0x0409, L"Name", L"What it is", L""}};
    character.images = std::make_shared<MemoryImages>(std::vector<Image>{{2, 2, {10, 20, 20, 30}}, Image{}});
    Frame speaking{{{0, 3, -4}}, {}, 10, 1, {{0, 25}}, {{Mouth::Closed, false, 0, 0, 0}}};
    character.animations = {{L"Wave", Transition::ReturnAnimation, L"BACK", {speaking, Frame{}}, false}};
    character.states = {{L"SHOWING", {L"Wave", L"Other"}}};
    return character;
}

bool Contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(Summary, CountsWhatACharacterHolds)
{
    EXPECT_EQ(Summary(Sample()), "1 animations, 2 frames, 2 images, 2 colours");
}

TEST(Description, TellsOfEachPart)
{
    const std::string text = Description(Sample());
    for (const char* part : {"20 x 10 pixels", "0x0409  Name: What it is", "Voice       none",
                             "Images      2, 4 pixels, 1 DAMAGED", "SHOWING: Wave Other",
                             "Wave  2 frames, 10 hundredths, return BACK",
                             "0: 10  image 0 at 3,-4  branch 0 25%  exit 1  1 mouths", "1: 0  unseen"})
        EXPECT_TRUE(Contains(text, part)) << part << "\nin\n" << text;
}

} // namespace voxtrel::acsc
