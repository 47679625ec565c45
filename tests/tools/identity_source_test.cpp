#include "tests/tools/sample_source.h"

#include <gtest/gtest.h>

namespace voxtrel::acsc {

namespace {

constexpr const char* kAnimation = "animation A { frame rest }\n";

CharacterSource With(const std::string& lines) { return samples::Parsed(lines + "\n" + kAnimation); }

} // namespace

TEST(IdentitySource, ReadsWhatStandsAtTheTop)
{
    const CharacterSource source = With("drawing \"other parts.svg\" // comment\nstandardset");
    EXPECT_EQ(source.guid, "{5B9E1C46-2F0D-4C57-9C3B-6B3F1B0E7A11}");
    EXPECT_EQ(source.width, 40);
    EXPECT_EQ(source.drawings, (std::vector<std::string>{"figure.svg", "other parts.svg"}));
    EXPECT_TRUE(source.standardAnimationSet);
}

TEST(IdentitySource, ReadsNamesInSeveralLanguages)
{
    const CharacterSource source =
        With("language de { name \"J\xC3\xBCrgen\"\n description \"Ein // Geist\" }\n"
             "language 0x0436 { name \"X\"\n extra \"Y\" }");
    ASSERT_EQ(source.localized.size(), 3u);
    EXPECT_EQ(source.localized[1].language, 0x0407);
    EXPECT_EQ(source.localized[1].name, L"J\u00FCrgen");
    EXPECT_EQ(source.localized[1].description, L"Ein // Geist");
    EXPECT_EQ(source.localized[2].language, 0x0436);
    EXPECT_EQ(source.localized[2].extraData, L"Y");
}

TEST(IdentitySource, ReadsVoiceAndBalloon)
{
    const CharacterSource source = With("voice {\n engine \"{ca141fd0-ac7f-11d1-97a3-006008273008}\"\n mode "
                                        "\"{CA141FD0-AC7F-11D1-97A3-006008273000}\"\n"
                                        " speed 160\n}\n"
                                        "balloon {\n lines 3\n characters 30\n text #102030\n background "
                                        "#FFFBF0\n font \"Sans\" height -15 weight 700 "
                                        "italic\n sizetotext on\n autohide off\n autopace off\n}");
    ASSERT_TRUE(source.voice.has_value());
    EXPECT_EQ(source.voice->engineId, "{CA141FD0-AC7F-11D1-97A3-006008273008}");
    EXPECT_EQ(source.voice->speed, 160u);
    EXPECT_EQ(source.voice->pitch, 0xFFFF);
    ASSERT_TRUE(source.balloon.has_value());
    EXPECT_EQ(source.balloon->lines, 3);
    EXPECT_EQ(source.balloon->charactersPerLine, 30);
    EXPECT_EQ(source.balloon->text, (agent::acs::Color{0x10, 0x20, 0x30}));
    EXPECT_EQ(source.balloon->fontName, L"Sans");
    EXPECT_EQ(source.balloon->fontHeight, -15);
    EXPECT_EQ(source.balloon->fontWeight, 700);
    EXPECT_TRUE(source.balloon->italic);
    EXPECT_TRUE(source.balloon->sizeToText);
    EXPECT_FALSE(source.balloon->autoHide);
    EXPECT_FALSE(source.balloon->autoPace);
}

TEST(IdentitySource, HasNeitherVoiceNorBalloonUnlessTheyAreDescribed)
{
    EXPECT_FALSE(With("").voice.has_value());
    EXPECT_FALSE(With("").balloon.has_value());
}

TEST(IdentitySource, ReadsStates)
{
    const CharacterSource source = With("state Speaking A\nstate IdlingLevel1 A Blink");
    EXPECT_EQ(source.states,
              (std::vector<agent::acs::State>{{L"Speaking", {L"A"}}, {L"IdlingLevel1", {L"A", L"Blink"}}}));
}

TEST(IdentitySource, PivotsLieInTheMiddleOfTheFrameUnlessTheyAreGiven)
{
    EXPECT_EQ(With("part hat on head").parts.back().pivot, (Point{20, 20}));
}

TEST(IdentitySource, TakesWindowsLineEndsAndAByteOrderMark)
{
    std::string text = "\xEF\xBB\xBF" + samples::Source(kAnimation);
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2)
        text.insert(at, 1, '\r');
    EXPECT_EQ(ParseCharacterSource(text).animations.size(), 1u);
}

struct Mistake {
    const char* lines;
    const char* told;
};

constexpr Mistake kMistakes[] = {
    {"colour red", "1: 'colour' was not expected here"},
    {"guid 5", "1: the identity must stand in double quotes: \"5\""},
    {"guid \"5\"", "1: the identity has the form {01234567-89AB-CDEF-0123-456789ABCDEF}"},
    {"size 8,8", "1: the frame is 16 to 512 units wide and high"},
    {"language xx { name \"A\" }", "1: the language 'xx' is not known; use a number like 0x0409"},
    {"language de { name \"A }", "1: a text has no closing quote"},
    {"language de {\n name Anna\n}", "2: a text must stand in double quotes: \"Anna\""},
    {"language de {\n name \"123456789012345678901234567890123\"\n}",
     "2: the text is longer than 32 characters"},
    {"language de { }", "1: the name in this language is missing"},
    {"voice { speed 150 }", "1: a voice needs 'engine' and 'mode'"},
    {"balloon { lines 200 }", "1: the number of lines must be a whole number from 1 to 128"},
    {"balloon { text red }", "1: 'red' is no colour like #FFFBF0"},
    {"balloon { autohide maybe }", "1: 'on' or 'off' is missing"},
    {"state Speaking", "1: an animation is missing at the end of the line"},
    {"standardset {\n}", "1: 'standardset' takes no block"},
    {"balloon {\n lines 3", "1: the block that starts here is not closed by '}'"},
    {"}", "1: '}' closes nothing"},
    {"{", "1: '{' follows nothing that takes a block"},
};

TEST(IdentitySource, TellsEachMistakeWithItsLine)
{
    for (const Mistake& mistake : kMistakes) {
        SCOPED_TRACE(mistake.lines);
        EXPECT_EQ(samples::MistakeIn(mistake.lines), mistake.told);
    }
}

TEST(IdentitySource, TellsWhatIsMissingAltogether)
{
    try {
        ParseCharacterSource("size 40,40\n");
        FAIL() << "nothing was missed";
    } catch (const SourceError& error) {
        EXPECT_STREQ(error.what(), "'guid' is missing");
        EXPECT_EQ(error.Line(), 0);
    }
}

} // namespace voxtrel::acsc
