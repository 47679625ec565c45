#include "textreader/segmentation.h"

#include <gtest/gtest.h>

#include <string>

namespace voxtrel::textreader {
namespace {

std::wstring Cut(const std::wstring& text, const std::optional<Section>& section)
{
    if (!section)
        return L"<none>";
    return text.substr(static_cast<std::size_t>(section->startpos),
                       static_cast<std::size_t>(section->strlength));
}

std::wstring SentenceAt(const std::wstring& text, std::int32_t caret, std::int32_t oldScanStart = 0)
{
    return Cut(text, CurrentSentence(text, caret, oldScanStart));
}

TEST(CurrentSentence, CaretAtZeroReadsTheFirstCharacter)
{
    const auto section = CurrentSentence(L"One two. Three.", 0, 0);
    ASSERT_TRUE(section);
    EXPECT_EQ(section->startpos, 0);
    EXPECT_EQ(section->strlength, 7);
    EXPECT_EQ(section->lastRead, 8);
}

TEST(CurrentSentence, FirstCharacterOfTheTextBelongsToTheSentenceUnlessItIsABlank)
{
    EXPECT_EQ(CurrentSentence(L"One.", 2, 0)->startpos, 0);
    const auto section = CurrentSentence(L" One. Two.", 2, 0);
    EXPECT_EQ(section->startpos, 1);
    EXPECT_EQ(section->strlength, 4);
}

TEST(CurrentSentence, FullStopBeforeABlankAlwaysEnds)
{
    EXPECT_EQ(SentenceAt(L"Hi. I saw Dr. Who there.", 6), L" I saw Dr.");
    EXPECT_EQ(SentenceAt(L"Hi. I saw Dr. Who there.", 15), L" Who there.");
}

TEST(CurrentSentence, FullStopInsideANumberOrBetweenLettersDoesNotSplit)
{
    EXPECT_EQ(SentenceAt(L"Hi. Pi is 3.14 or so. Yes.", 5), L" Pi is 3.14 or so.");
    EXPECT_EQ(SentenceAt(L"Hi. Pi is 3.14 or so. Yes.", 16), L" Pi is 3.14 or so.");
    EXPECT_EQ(SentenceAt(L"Hi. See a.b.c now. Yes.", 12), L" See a.b.c now.");
}

TEST(CurrentSentence, RunOfEndMarksGoesOnToTheLast)
{
    EXPECT_EQ(SentenceAt(L"Hi. Well...! Yes.", 6), L" Well...!");
}

TEST(CurrentSentence, EndBeforeACarriageReturnEnds)
{
    EXPECT_EQ(SentenceAt(L"Hi. One.\r\nTwo.", 5), L" One.");
    EXPECT_EQ(SentenceAt(L"Hi. One.\r\nTwo.", 12), L"\r\nTwo.");
}

TEST(CurrentSentence, LineBreakAloneEndsNoSentence)
{
    EXPECT_EQ(SentenceAt(L"Hi. One\r\ntwo. Yes.", 5), L" One\r\ntwo.");
    EXPECT_EQ(SentenceAt(L"Hi. One\r\ntwo. Yes.", 11), L" One\r\ntwo.");
}

TEST(CurrentSentence, CaretOnALineBreakMovesOnlyWhenASectionWasThereBefore)
{
    const std::wstring text = L"One.\r\nTwo. Three.";
    EXPECT_EQ(SentenceAt(text, 5, 0), L"\r\nTwo.");
    EXPECT_EQ(SentenceAt(text, 5, 2), L"\r\nTwo.");
    const std::wstring unended = L"Hi. One\r\n\r\n. Two";
    EXPECT_EQ(SentenceAt(unended, 8, 0), L" One\r\n\r\n.");
    EXPECT_EQ(SentenceAt(unended, 8, 2), L""); // the mark after the lines, by itself
}

TEST(CurrentSentence, EndsAtTheEndOfTheText)
{
    EXPECT_EQ(CurrentSentence(L"a.", 0, 0)->lastRead, 2);
    EXPECT_EQ(CurrentSentence(L"a!", 0, 0)->lastRead, 2);
    EXPECT_EQ(CurrentSentence(L"a?", 2, 0)->strlength, 2); // the caret stands past the mark
    EXPECT_EQ(SentenceAt(L"Hi. no end", 5), L" no end");
}

TEST(CurrentSentence, EmptyTextGivesNothing) { EXPECT_FALSE(CurrentSentence(L"", 0, 0)); }

TEST(CurrentParagraph, IncludesItsClosingCarriageReturnUnlessItIsTheLast)
{
    const std::wstring text = L"One.\r\nTwo.\r\nThree.";
    const auto first = CurrentParagraph(text, 0);
    EXPECT_EQ(first->startpos, 0);
    EXPECT_EQ(Cut(text, first), L"One.\r\n");
    EXPECT_EQ(Cut(text, CurrentParagraph(text, 8)), L"\nTwo.\r\n");
    EXPECT_EQ(Cut(text, CurrentParagraph(text, 14)), L"\nThree.");
}

TEST(CurrentParagraph, EmptyLineUnderTheCaretIsSkipped)
{
    const std::wstring text = L"One\r\n\r\nTwo\r\nThree";
    EXPECT_EQ(Cut(text, CurrentParagraph(text, 5)), L"\nTwo\r\n");
}

TEST(CurrentParagraph, CaretAtTheEndOfTheTextEnds)
{
    EXPECT_EQ(CurrentParagraph(L"a", 1)->strlength, 1);
    EXPECT_EQ(Cut(L"a\r", CurrentParagraph(L"a\r", 1)), L"");
    EXPECT_EQ(Cut(L"\r\r\r", CurrentParagraph(L"\r\r\r", 0)), L"");
}

TEST(CurrentParagraph, LeadingEndMarkIsLeftOut)
{
    const std::wstring text = L".One\r\nTwo";
    EXPECT_EQ(Cut(text, CurrentParagraph(text, 2)), L"One\r\n");
}

TEST(NextParagraph, OnTheLastParagraphSelectsItAgain)
{
    const std::wstring text = L"One\r\nTwo";
    const auto last = NextParagraph(text, 0, 5);
    EXPECT_EQ(Cut(text, last), L"\nTwo");
    const auto again = NextParagraph(text, last->startpos, last->strlength);
    EXPECT_EQ(again->startpos, last->startpos);
    EXPECT_EQ(again->strlength, last->strlength);
}

TEST(NextParagraph, InATextOfOneCharacterStaysInside)
{
    const auto section = NextParagraph(L"a", 0, 0);
    ASSERT_TRUE(section);
    EXPECT_EQ(section->startpos, 0);
    EXPECT_EQ(section->strlength, 1);
}

TEST(PreviousParagraph, CountsTheClosingBreakAlways)
{
    const std::wstring text = L"One\r\nTwo\r\nThree";
    EXPECT_EQ(Cut(text, PreviousParagraph(text, 9)), L"\nTwo\r\n");
    const auto first = PreviousParagraph(text, 4);
    EXPECT_EQ(first->startpos, 0);
    EXPECT_EQ(first->strlength, 4);
    EXPECT_EQ(PreviousParagraph(text, 0)->startpos, 0);
}

TEST(PreviousParagraph, StepsOverLineBreaksStopAtTheFirstCharacter)
{
    EXPECT_TRUE(PreviousParagraph(L"\r\r\r", 3));
    EXPECT_TRUE(PreviousParagraph(L"\r\n\r\n", 4));
    EXPECT_TRUE(PreviousParagraph(L"\r", 0));
}

std::wstring WordAt(const std::wstring& text, std::int32_t caret)
{
    return Cut(text, CurrentWord(text, caret));
}

TEST(CurrentWord, RunsThroughTheDelimiterThatEndedIt)
{
    EXPECT_EQ(WordAt(L"See the cat.", 5), L"the ");
    EXPECT_EQ(WordAt(L"See the, cat.", 5), L"the,");
}

TEST(CurrentWord, CaretOnABlankMovesOnByOne)
{
    EXPECT_EQ(WordAt(L"See the cat.", 4), L"the ");
    EXPECT_EQ(WordAt(L"See  the cat.", 4), L"");
}

TEST(CurrentWord, OneInnerFullStopIsBridged)
{
    EXPECT_EQ(WordAt(L"x 3.14 y", 3), L"3.14 ");
    EXPECT_EQ(WordAt(L"x 1.2.3 y", 3), L"1.2.");
    EXPECT_EQ(WordAt(L"x end. y", 4), L"end.");
}

TEST(CurrentWord, OnlyBlanksAndLineBreaksBoundItOnTheLeft)
{
    EXPECT_EQ(WordAt(L"x one,two y", 7), L"one,two ");
    EXPECT_EQ(WordAt(L"x\r\none y", 5), L"\none ");
}

TEST(CurrentWord, FirstWordOfTheTextIncludesTheFirstCharacter)
{
    const auto section = CurrentWord(L"Hello world", 0);
    EXPECT_EQ(section->startpos, 0);
    EXPECT_EQ(section->strlength, 5);
}

TEST(CurrentWord, StopsAtTheEndOfTheText)
{
    EXPECT_EQ(WordAt(L"x end", 4), L"end");
    EXPECT_EQ(WordAt(L"x end.", 4), L"end.");
    EXPECT_EQ(WordAt(L"x ", 2), L"");
}

TEST(NextWord, GivesTheDecimalNumberAsOneWord)
{
    const std::wstring text = L"Pi, 3.14 or .5! Two";
    std::vector<std::wstring> words;
    std::int32_t end = 0;
    for (auto word = NextWord(text, end); word; word = NextWord(text, end)) {
        words.push_back(Cut(text, word));
        end = word->lastRead;
    }
    EXPECT_EQ(words, (std::vector<std::wstring>{L"Pi", L"3.14 ", L"or ", L".5!", L"Two"}));
}

TEST(NextWord, TheRestOfASentencesEndIsPassed)
{
    EXPECT_EQ(Cut(L"Oh!!Yes", NextWord(L"Oh!!Yes", 3)), L"Yes");
    EXPECT_EQ(Cut(L"a,,b", NextWord(L"a,,b", 2)), L",b");
}

TEST(NextWord, NothingFollowsTheLast)
{
    EXPECT_FALSE(NextWord(L"one ", 4));
    EXPECT_FALSE(NextWord(L"one ... \r\n", 4));
    EXPECT_FALSE(NextWord(L"", 0));
}

TEST(NextSentence, BlanksAtTheEndOfTheTextAreNoSentence)
{
    EXPECT_FALSE(NextSentence(L"One. \r\n\t", 4));
    EXPECT_FALSE(NextSentence(L"", 0));
}

TEST(NextSentence, BeginsWhereTheSectionEnded)
{
    const std::wstring text = L"One two. Three four.";
    EXPECT_EQ(Cut(text, NextSentence(text, 4)), L"two.");
    EXPECT_EQ(Cut(text, NextSentence(text, 8)), L" Three four.");
}

TEST(PreviousSentence, FromTheMiddleGoesBackToTheBeginning)
{
    const std::wstring text = L"One two. Three four.";
    EXPECT_EQ(Cut(text, PreviousSentence(text, 14)), L" Three four.");
    EXPECT_EQ(PreviousSentence(text, 8)->startpos, 0);
    EXPECT_EQ(PreviousSentence(text, 0)->startpos, 0);
}

} // namespace
} // namespace voxtrel::textreader
