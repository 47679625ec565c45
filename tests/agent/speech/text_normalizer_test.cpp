#include "agent/speech/text_normalizer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace voxtrel::agent::speech {
namespace {

// The tokens with their punctuation, a blank between them.
std::string Said(std::wstring_view run, ReadingContext context = ReadingContext::Unknown)
{
    std::string said;
    for (const SpokenToken& token : NormalizeRun(run, context).tokens) {
        said += said.empty() ? "" : " ";
        said += token.name;
        if (token.punctuation != 0)
            said += token.punctuation;
    }
    return said;
}

struct SaidCase {
    const wchar_t* run;
    const char* said;
};

void ExpectSaid(std::initializer_list<SaidCase> cases)
{
    for (const auto& [run, said] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(run)));
        EXPECT_EQ(Said(run), said);
    }
}

TEST(NormalizeRun, KeepsPlainWordsAndTheirPunctuation)
{
    ExpectSaid({
        {L"Hello", "Hello"},
        {L"world.", "world."},
        {L"Really?!", "Really?"},
        {L"\"Well,\"", "Well,"},
        {L"(yes)", "yes"},
        {L"don't", "don't"},
        {L"'quoted'", "quoted"},
        {L"well-known", "well known"},
        {L"one,two", "one, two"},
    });
}

TEST(NormalizeRun, MakesTypographyPlain)
{
    ExpectSaid({
        {L"don\u2019t", "don't"},
        {L"\u201CHello\u201D", "Hello"},
        {L"one\u2014two", "one, two"},
        {L"1998\u20131999", "1998-1999"},
        {L"wait\u2026", "wait."},
        {L"e\u00ADmail", "email"},
    });
}

TEST(NormalizeRun, TakesAccentsAndLigaturesOff)
{
    ExpectSaid({
        {L"café", "cafe"},
        {L"naïve", "naive"},
        {L"straße", "strasse"},
        {L"Ærøskøbing", "Aeroskobing"},
        {L"\uFB01nd", "find"},
        {L"e\u0301tude", "etude"},
        {L"Łódź", "Lodz"},
        {L"\uFF28\uFF49", "hi"},
        {L"Trầm", "Tram"},
    });
}

TEST(NormalizeRun, SaysCommonSymbols)
{
    ExpectSaid({
        {L"50%", "50 percent"},
        {L"$5.20", "$5.20"},
        {L"€20", "20 euros"},
        {L"€1", "1 euro"},
        {L"£1,500", "1,500 pounds"},
        {L"20°", "20 degrees"},
        {L"20°C.", "20 degrees Celsius."},
        {L"&", "and"},
        {L"a@b.org", "a at b dot org"},
        {L"#5", "number 5"},
        {L"C++", "C plus plus"},
        {L"m²", "m squared"},
        {L"2½", "2 and 1/2"},
        {L"C:\\temp", "C: backslash temp"},
        {L"±3", "plus or minus 3"},
        {L"α", "alpha"},
    });
}

TEST(NormalizeRun, KeepsFiguresWhole)
{
    ExpectSaid({
        {L"3.14", "3.14"},
        {L"1,234,567", "1,234,567"},
        {L"2nd", "2nd"},
        {L"1990s", "1990s"},
        {L"5kg", "5kg"},
        {L"1/2", "1/2"},
        {L"-5", "minus 5"},
        {L"10:30", "ten thirty"},
        {L"9:05", "nine oh five"},
        {L"$1:30", "$1: 30"},
        {L"7:00", "seven"},
        {L"23:59", "twenty three fifty nine"},
        {L"1.2.3", "1 point 2 point 3"},
        {L"12/25/2024", "twelve twenty five twenty twenty four"},
        {L"2005-01-31.", "two thousand five one thirty one."},
        {L"31.12.1999", "thirty one twelve nineteen ninety nine"},
        {L"1/2/1800", "one two eighteen hundred"},
        {L"1/2/1905", "one two nineteen oh five"},
        {L"1/2/03", "one two three"},
        {L"555-123-4567", "555-123-4567"},
        {L"MP3", "MP3"},
        {L"example.com", "example dot com"},
        {L"end.Next", "end. Next"},
    });
}

TEST(NormalizeRun, SkipsWhatHasNoSound)
{
    ExpectSaid({
        {L"\U0001F600", ""},
        {L"hi\U0001F600there", "hi there"},
        {L"日本語", ""},
        {L"привет", ""},
        {L"a\x01\x02z", "az"},
        {L"\x7f", ""},
        {L"\u200D\uFE0F", ""},
        {L";", ""},
        {L"...", ""},
        {L"=====", ""},
        {L"_____", ""},
        {L"***", ""},
    });
    const std::wstring torn{L'a', static_cast<wchar_t>(0xD83D), L'b', static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(Said(torn), "ab");
}

TEST(NormalizeRun, TellsEndsOfSentencesFromAbbreviations)
{
    EXPECT_EQ(NormalizeRun(L"end.", ReadingContext::Unknown).ending, Break::Sentence);
    EXPECT_EQ(NormalizeRun(L"end.\"", ReadingContext::Unknown).ending, Break::Sentence);
    EXPECT_EQ(NormalizeRun(L"Dr.", ReadingContext::Unknown).ending, Break::None);
    EXPECT_EQ(NormalizeRun(L"e.g.", ReadingContext::Unknown).ending, Break::None);
    EXPECT_EQ(NormalizeRun(L"J.", ReadingContext::Unknown).ending, Break::None);
    EXPECT_EQ(NormalizeRun(L"U.S.", ReadingContext::Unknown).ending, Break::None);
    EXPECT_EQ(NormalizeRun(L"but,", ReadingContext::Unknown).ending, Break::Comma);
    EXPECT_EQ(NormalizeRun(L";", ReadingContext::Unknown).ending, Break::Semicolon);
    EXPECT_EQ(NormalizeRun(L"\u2014", ReadingContext::Unknown).ending, Break::Comma);
}

TEST(NormalizeRun, FollowsTheContext)
{
    EXPECT_EQ(Said(L"Ave", ReadingContext::Address), "avenue");
    EXPECT_EQ(Said(L"Ave"), "Ave");
    EXPECT_EQ(Said(L"my_name-x@b.org", ReadingContext::EMail), "my underscore name dash x at b dot org");
}

// Whatever comes in, the tokens are such that the synthesizer can bear them.
TEST(NormalizeRun, GivesOnlyBearableTokensForAnyText)
{
    std::mt19937 random(7);
    constexpr std::wstring_view kLikely =
        L"ab Z09.,:;-/'\"$€%@#&+=<>\\_~^|`éßø½²°\u2019\u2014\u2026\U0001F600\u0301日";
    for (int round = 0; round < 20000; ++round) {
        std::wstring run;
        for (std::size_t length = random() % 60; length > 0; --length) {
            run += random() % 4 == 0
                       ? static_cast<wchar_t>(random() % (sizeof(wchar_t) == 2 ? 0x10000 : 0x120000))
                       : kLikely[random() % kLikely.size()];
        }
        for (const SpokenToken& token : NormalizeRun(run, static_cast<ReadingContext>(random() % 3)).tokens) {
            ASSERT_FALSE(token.name.empty());
            ASSERT_LE(token.name.size(), 40u);
            ASSERT_TRUE(std::any_of(token.name.begin(), token.name.end(), [](unsigned char c) {
                return std::isalnum(c) != 0;
            })) << token.name;
            ASSERT_TRUE(std::all_of(token.name.begin(), token.name.end(), [](unsigned char c) {
                return std::isalnum(c) != 0 ||
                       std::string_view(".,'/$-").find(static_cast<char>(c)) != std::string_view::npos;
            })) << token.name;
        }
    }
}

TEST(NormalizeRun, ReadsEndlessFiguresDigitByDigit)
{
    const NormalizedRun run = NormalizeRun(std::wstring(300, L'7'), ReadingContext::Unknown);
    EXPECT_EQ(run.tokens.size(), 300u);
}

} // namespace
} // namespace voxtrel::agent::speech
