#include "agent/stage/balloon_lines.h"

#include "tests/agent/stage/stage_fakes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace voxtrel::agent::stage {
namespace {

// Lines of twenty characters.
class BalloonLinesTest : public ::testing::Test {
protected:
    std::vector<std::wstring> Shown() const { return {lines.Lines().begin(), lines.Lines().end()}; }

    FakeStageView measure;
    BalloonLines lines{measure, {L"Sans", 10, false, false}, 100, 3};
};

using Lines = std::vector<std::wstring>;

TEST_F(BalloonLinesTest, WordsFollowEachOtherWithOneBlank)
{
    lines.AddWord(L"one");
    lines.AddWord(L"two");
    EXPECT_EQ(Shown(), (Lines{L"one two"}));
}

TEST_F(BalloonLinesTest, WordThatDoesNotFitBeginsALine)
{
    lines.AddWord(L"twelve chars");
    lines.AddWord(L"sevenchr");
    EXPECT_EQ(Shown(), (Lines{L"twelve chars", L"sevenchr"}));
}

TEST_F(BalloonLinesTest, LineMayBeFullToTheLastPixel)
{
    lines.AddWord(L"twelve chars");
    lines.AddWord(L"sevench");
    EXPECT_EQ(Shown(), (Lines{L"twelve chars sevench"}));
}

TEST_F(BalloonLinesTest, TooLongWordIsBroken)
{
    lines.AddWord(L"a");
    lines.AddWord(std::wstring(45, L'x'));
    EXPECT_EQ(Shown(), (Lines{std::wstring(20, L'x'), std::wstring(20, L'x'), std::wstring(5, L'x')}));
    EXPECT_EQ(lines.Dropped(), 1U);
}

TEST_F(BalloonLinesTest, BreaksAtBlanksTabsAndZeroWidthSpacesInsideAWord)
{
    lines.AddWord(L"the first part\tof\u200B"
                  L"a mapped word");
    EXPECT_EQ(Shown(), (Lines{L"the first part ofa", L"mapped word"}));
}

TEST_F(BalloonLinesTest, LineBreakEndsTheLineAndEmptyLinesAreLeftOut)
{
    lines.BreakLine();
    lines.AddWord(L"one");
    lines.BreakLine();
    lines.BreakLine();
    lines.AddWord(L"two");
    EXPECT_EQ(Shown(), (Lines{L"one", L"two"}));
}

TEST_F(BalloonLinesTest, EarlierLinesScrollOutAtTheTop)
{
    for (int i = 0; i < 10; ++i) {
        lines.AddWord(std::to_wstring(i));
        lines.BreakLine();
    }
    EXPECT_EQ(Shown(), (Lines{L"7", L"8", L"9"}));
    EXPECT_EQ(lines.Dropped(), 7U);
}

TEST_F(BalloonLinesTest, TextKeepsItsLineBreaks)
{
    lines.AddText(L"one two\r\nthree\n\nfour");
    EXPECT_EQ(Shown(), (Lines{L"one two", L"three", L"four"}));
}

TEST_F(BalloonLinesTest, MegabyteWithoutABlankIsCutAndQuick)
{
    lines.AddWord(std::wstring(1'000'000, L'x'));
    EXPECT_EQ(Shown().size(), 3U);
    EXPECT_LT(lines.Dropped(), 1000U);
}

TEST_F(BalloonLinesTest, EverythingFitsIntoSomeLineHoweverNarrow)
{
    BalloonLines narrow(measure, {L"Sans", 300, false, false}, 100, 10);
    narrow.AddWord(L"abc");
    EXPECT_EQ(std::vector<std::wstring>(narrow.Lines().begin(), narrow.Lines().end()),
              (Lines{L"a", L"b", L"c"}));
}

TEST_F(BalloonLinesTest, PairsAndCombiningMarksStayTogether)
{
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    lines.AddWord(std::wstring(19, L'x') + pair + L"y");
    EXPECT_EQ(Shown(), (Lines{std::wstring(19, L'x'), pair + L"y"}));
    lines.BreakLine();
    lines.AddWord(std::wstring(20, L'x') + L"\u0301y");
    EXPECT_EQ(Shown().back(), L"x\u0301y");
}

TEST_F(BalloonLinesTest, AmpersandIsShownAsItIs)
{
    lines.AddWord(L"salt & pepper");
    EXPECT_EQ(Shown(), (Lines{L"salt & pepper"}));
}

} // namespace
} // namespace voxtrel::agent::stage
