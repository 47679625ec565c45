#include "options/pronunciation_file.h"

#include <gtest/gtest.h>

namespace voxtrel::options {
namespace {

TEST(ParsePronunciations, OneEntryALineWhateverEndsIt)
{
    const ParsedPronunciations parsed = ParsePronunciations(L"a\tb\nc\td\r\ne\tf\rg\th");
    EXPECT_EQ(parsed.pairs, (PronunciationPairs{{L"a", L"b"}, {L"c", L"d"}, {L"e", L"f"}, {L"g", L"h"}}));
    EXPECT_EQ(parsed.skipped, 0u);
}

TEST(ParsePronunciations, OnlyTheFirstTabSeparatesAndBlanksCount)
{
    EXPECT_EQ(ParsePronunciations(L" \t two\twords ").pairs, (PronunciationPairs{{L" ", L" two\twords "}}));
}

TEST(ParsePronunciations, LinesWithoutAWordOrATabAreCountedEmptyOnesAreNot)
{
    const ParsedPronunciations parsed = ParsePronunciations(L"\n\nword\n\tsound\n\r\nx\ty\n");
    EXPECT_EQ(parsed.pairs.size(), 1u);
    EXPECT_EQ(parsed.skipped, 2u);
}

TEST(ParsePronunciations, EmptyTextHasNoEntries)
{
    EXPECT_TRUE(ParsePronunciations(L"").pairs.empty());
    EXPECT_EQ(ParsePronunciations(L"").skipped, 0u);
}

TEST(FormatPronunciations, WritesUtf8AndLeavesOutWhatNoLineCanHold)
{
    const FormattedPronunciations formatted = FormatPronunciations(
        {{L"\u00E9", L"e\tf"}, {L"a\tb", L"c"}, {L"a\nb", L"c"}, {L"a", L"b\rc"}, {L"", L"x"}, {L"z", L""}});
    EXPECT_EQ(formatted.bytes, "\xC3\xA9\te\tf\nz\t\n");
    EXPECT_EQ(formatted.skipped, 4u);
}

TEST(FormatPronunciations, ComesBackThroughParsing)
{
    const PronunciationPairs pairs = {
        {L"\"", L"quote"}, {L"\\", L"back"}, {L"\U0001F600", L"smile"}, {L"#", L"hash"}};
    const FormattedPronunciations formatted = FormatPronunciations(pairs);
    EXPECT_EQ(formatted.bytes, "\"\tquote\n\\\tback\n\xF0\x9F\x98\x80\tsmile\n#\thash\n");
}

} // namespace
} // namespace voxtrel::options
