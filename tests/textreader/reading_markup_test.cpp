#include "textreader/reading_markup.h"

#include <gtest/gtest.h>

#include <string>

namespace voxtrel::textreader {
namespace {

class BuildReadingMarkupTest : public testing::Test {
protected:
    BuildReadingMarkupTest()
    {
        shared.Speed = 150;
        shared.Pitch = 140;
        shared.Volume = 30000;
    }

    ReadingMarkup Build(const std::wstring& text, std::int32_t start, std::int32_t length) const
    {
        return BuildReadingMarkup(text, start, length, shared, speech::PronunciationTable(pronunciations));
    }

    // What is spoken, without prosody, wrapping and end mark.
    std::wstring Body(const std::wstring& text, std::int32_t start, std::int32_t length) const
    {
        const std::wstring markup = Build(text, start, length).markup;
        const std::wstring before = L"\\Spd=150\\\\Pit=140\\\\Vol=30000\\   \\map=\"";
        const std::wstring after = L"\\Mrk=999999999\\ \"=\"\"\\";
        if (markup.size() < before.size() + after.size() || markup.substr(0, before.size()) != before ||
            markup.substr(markup.size() - after.size()) != after)
            return L"<" + markup + L">";
        return markup.substr(before.size(), markup.size() - before.size() - after.size());
    }

    settings::SharedSettings shared;
    std::vector<std::pair<std::wstring, std::wstring>> pronunciations;
};

TEST_F(BuildReadingMarkupTest, SectionAtZeroMarksItsFirstWordAtPositionOne)
{
    EXPECT_EQ(Body(L"Hello world.", 0, 11), L"\\Mrk=500001\\Hello \\Mrk=600007\\world. ");
}

TEST_F(BuildReadingMarkupTest, FirstWordOfOneCharacterGetsNumber100001)
{
    EXPECT_EQ(Body(L"I am", 0, 4), L"\\Mrk=100001\\I \\Mrk=200003\\am ");
}

TEST_F(BuildReadingMarkupTest, SectionInsideTheTextCountsFromTheTextsBeginning)
{
    EXPECT_EQ(Body(L"One. Two three.", 4, 11), L"\\Mrk=300006\\Two \\Mrk=600010\\three. ");
}

TEST_F(BuildReadingMarkupTest, DigitsAndPunctuationJoinTheWord)
{
    EXPECT_EQ(Body(L"x etc., 3.14 1,000", 1, 17),
              L"\\Mrk=500003\\etc., \\Mrk=400009\\3.14 \\Mrk=500014\\1,000 ");
}

TEST_F(BuildReadingMarkupTest, LineBreakBecomesAPauseWithoutABookmarkOfItsOwn)
{
    EXPECT_EQ(Body(L"x one\r\ntwo", 1, 9), L"\\Mrk=400003\\one\r\\pau=700\\ \\Mrk=300008\\two ");
}

TEST_F(BuildReadingMarkupTest, CarriageReturnOnItsOwnIsAWord)
{
    EXPECT_EQ(Body(L"x \r\ntwo", 1, 6), L"\\Mrk=100003\\\r\\pau=700\\ \\Mrk=300005\\two ");
}

TEST_F(BuildReadingMarkupTest, WithThePauseOnEvenTheBlankOfTheEndMarkBecomesAPause)
{
    shared.interwordpause = 250;
    shared.VoiceType = L"\\chr=\"Whisper\"\\";
    shared.SAPITags = L"\\Ctx=\"E mail\"\\";
    EXPECT_EQ(Build(L"a b", 0, 3).markup,
              L"\\Ctx=\"E mail\"\\\\Spd=150\\\\Pit=140\\\\Vol=30000\\  \\chr=\"Whisper\"\\ "
              L"\\map=\"\\Mrk=100001\\a;\\pau=250\\\\Mrk=100003\\b;\\pau=250\\\\Mrk=999999999\\;\\pau="
              L"250\\\"=\"\"\\");
}

TEST_F(BuildReadingMarkupTest, MarksAreReplacedByTheirPronunciationAndWordsByTheirs)
{
    pronunciations = {{L"&", L" and "}, {L"dr.", L"doctor"}, {L"a and b", L"never"}, {L"x and y", L"axes"}};
    EXPECT_EQ(Body(L"- Dr. Who a&z x&y", 1, 16),
              L"\\Mrk=300003\\doctor \\Mrk=300007\\Who \\Mrk=300011\\a and z \\Mrk=300015\\axes ");
}

TEST_F(BuildReadingMarkupTest, ReplacedMarkKeepsTheWordsPlaceAndLength)
{
    pronunciations = {{L"%", L" percent of everything"}};
    const ReadingMarkup reading = Build(L"x 50% y", 1, 6);
    ASSERT_EQ(reading.words.size(), 2u);
    EXPECT_EQ(reading.words[0].position, 3);
    EXPECT_EQ(reading.words[0].length, 3);
}

TEST_F(BuildReadingMarkupTest, AccentsStayInsideAndWhatIsNoLetterEndsTheWord)
{
    EXPECT_EQ(Body(L"x caf\u00E9 na\u00EFve stra\u00DFe \u00C9t\u00C9", 1, 22),
              L"\\Mrk=400003\\caf\u00E9 \\Mrk=500008\\na\u00EFve \\Mrk=400014\\stra \\Mrk=100019\\e "
              L"\\Mrk=300021\\\u00C9t\u00C9 ");
    EXPECT_EQ(Body(L"x a\tb\u201Cc\u201D", 1, 7), L"\\Mrk=100003\\a \\Mrk=100005\\b \\Mrk=100007\\c ");
}

TEST_F(BuildReadingMarkupTest, EmojiIsNotSpokenAndKeepsThePlaces)
{
    const std::wstring text = L"x \U0001F600 fun";
    const ReadingMarkup reading = Build(text, 1, static_cast<std::int32_t>(text.size()) - 1);
    ASSERT_EQ(reading.words.size(), 1u);
    EXPECT_EQ(static_cast<std::size_t>(reading.words[0].position), text.find(L"fun") + 1);
}

TEST_F(BuildReadingMarkupTest, SurrogatePairAtTheBeginningStaysWhole)
{
    const std::wstring pair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(Body(pair + L"a b", 0, 5), L"\\Mrk=300001\\" + pair + L"a \\Mrk=100005\\b ");
}

TEST_F(BuildReadingMarkupTest, FirstCharacterBelongsToTheFirstWordWhateverItIs)
{
    EXPECT_EQ(Body(L" Hi", 0, 3), L"\\Mrk=300001\\ Hi ");
    EXPECT_EQ(Body(L"\r\nHi", 0, 4), L"\\Mrk=100001\\\r \\Mrk=200003\\Hi ");
}

TEST_F(BuildReadingMarkupTest, BackslashAtTheBeginningOpensNoTag)
{
    EXPECT_EQ(Body(L"\\Vol=1\\ x", 0, 9), L"\\Mrk=600001\\Vol=1 \\Mrk=100009\\x ");
}

TEST_F(BuildReadingMarkupTest, CharacterBehindASectionAtZeroEndsItsWordButBeginsNone)
{
    EXPECT_EQ(Body(L"One.\r\nTwo", 0, 6), L"\\Mrk=500001\\One.\r\\pau=700\\ ");
    EXPECT_EQ(Body(L"One. Two", 0, 3), L"\\Mrk=400001\\One. ");
}

TEST_F(BuildReadingMarkupTest, NothingIsReadPastTheEndOfTheText)
{
    EXPECT_EQ(Body(L"a b", 0, 3000), L"\\Mrk=100001\\a \\Mrk=100003\\b ");
    EXPECT_EQ(Body(L"a b", 1, 2147483000), L"\\Mrk=100003\\b ");
    EXPECT_TRUE(Build(L"a b", 3, 1).markup.empty());
    EXPECT_TRUE(Build(L"a b", 0, 0).markup.empty());
    EXPECT_TRUE(Build(L"", 0, 5).markup.empty());
}

TEST_F(BuildReadingMarkupTest, SectionWithoutAWordIsNotSpoken)
{
    EXPECT_TRUE(Build(L"a \n\t \u20AC", 1, 5).markup.empty());
}

struct PackingCase {
    WordMark mark;
    std::int32_t number;
    std::int32_t lengthRead; // decoded; position is mark's below 100000
};

constexpr PackingCase kPackingCases[] = {
    {{1, 1}, 100001, 1},
    {{49999, 5}, 549999, 5},
    {{50000, 5}, 550000, 6}, // 5.5 goes to the even 6
    {{50000, 4}, 450000, 4}, // 4.5 goes to the even 4
    {{50001, 5}, 550001, 6},
    {{99999, 1}, 199999, 2},
    {{88888, 888}, 88788888, 888},    // the number of the end of the text is not a word's
    {{99999, 9999}, 999899999, 9999}, // nor that of the end of a section
    {{0, 0}, 10001, 0},
};

TEST(PackWordMark, PacksAndRoundsAsTheTableSays)
{
    for (const PackingCase& row : kPackingCases) {
        SCOPED_TRACE(testing::Message() << row.mark.position << " " << row.mark.length);
        EXPECT_EQ(PackWordMark(row.mark), row.number);
        if (row.mark.position > 0) {
            EXPECT_EQ(UnpackWordMark(row.number).position, row.mark.position);
            EXPECT_EQ(UnpackWordMark(row.number).length, row.lengthRead);
        }
    }
}

TEST(PackWordMark, NeverOverflowsNorGivesAReservedNumber)
{
    for (const std::int32_t position : {1, 88888, 99999, 188888, 5000000, 2000000000}) {
        for (const std::int32_t length : {1, 887, 888, 889, 9998, 9999, 21474, 21475, 5000000}) {
            const std::int32_t number = PackWordMark({position, length});
            EXPECT_GT(number, 0);
            EXPECT_NE(number, kEndOfSection);
            EXPECT_NE(number, kEndOfText);
        }
    }
}

TEST(ResumePoint, IsJustBehindTheWord)
{
    EXPECT_EQ(ResumePoint(500001), 6);
    EXPECT_EQ(ResumePoint(600007), 13);
    EXPECT_EQ(ResumePoint(550001), 50007); // rounded up from position 50000 on
    EXPECT_EQ(ResumePoint(0), 0);
}

} // namespace
} // namespace voxtrel::textreader
