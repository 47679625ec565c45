#include "agent/speech/plain_text.h"

#include "agent/speech/clause_cutter.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::speech {
namespace {

struct RunCase {
    const wchar_t* run;
    const char* kept; // null: no token
    Break ending;
};

constexpr RunCase kRunCases[] = {
    {L"Stra\u00DFe",
     "Stra\xC3\x9F"
     "e",
     Break::None},
    {L"Ende.", "Ende.", Break::Sentence},
    {L"\u00BBEnde.\u00AB",
     "\xC2\xBB"
     "Ende.\xC2\xAB",
     Break::Sentence},
    {L"Was?!", "Was?!", Break::Sentence},
    {L"viel,", "viel,", Break::Comma},
    {L"so:", "so:", Break::Semicolon},
    {L"z.B.", "z.B.", Break::None},
    {L"Nr.", "Nr.", Break::None},
    {L"bzw.", "bzw.", Break::None},
    {L"mit.", "mit.", Break::Sentence},
    {L"3.", "3.", Break::None},
    {L"1.250,50", "1.250,50", Break::None},
    {L"\u043D\u0435\u0442.", "\xD0\xBD\xD0\xB5\xD1\x82.", Break::Sentence},
    {L"\u4F60\u597D\u3002", "\xE4\xBD\xA0\xE5\xA5\xBD\xE3\x80\x82", Break::Sentence},
    {L"\u061F", nullptr, Break::Sentence},
    {L"\u20AC", "\xE2\x82\xAC", Break::None},
    {L"%", "%", Break::None},
    {L"\u2014", nullptr, Break::Comma},
    {L"----", nullptr, Break::Comma},
    {L"=====", nullptr, Break::None},
    {L"***", nullptr, Break::None},
    {L".", nullptr, Break::Sentence},
    {L"a\x01"
     L"b\x7F",
     "ab", Break::None},
    {L"\x01", nullptr, Break::None},
};

TEST(KeepRun, KeepsWordsAsTheyAreWritten)
{
    for (const auto& [run, kept, ending] : kRunCases) {
        SCOPED_TRACE(run);
        const NormalizedRun made = KeepRun(run);
        ASSERT_EQ(made.tokens.size(), kept ? 1U : 0U);
        if (kept) {
            EXPECT_EQ(made.tokens[0].name, kept);
        }
        EXPECT_EQ(made.ending, ending);
    }
}

TEST(KeepRun, LeavesOutHalvesOfPairs)
{
    const std::wstring torn{L'a', static_cast<wchar_t>(0xD83D), L'b', static_cast<wchar_t>(0xDE00)};
    const NormalizedRun made = KeepRun(torn);
    ASSERT_EQ(made.tokens.size(), 1U);
    EXPECT_EQ(made.tokens[0].name, "ab");
}

std::vector<std::string> ClausesOf(std::wstring_view markup)
{
    ClauseCutter cutter(markup, ClauseCutter::Bookmarks::Report, ClauseCutter::Wording::AsWritten);
    std::vector<std::string> clauses;
    for (Clause clause = cutter.Next();; clause = cutter.Next()) {
        std::string text;
        for (const SpokenToken& token : clause.tokens) {
            text += text.empty() ? "" : " ";
            text += token.name;
            if (token.punctuation != 0)
                text += token.punctuation;
        }
        if (!text.empty())
            clauses.push_back(text);
        if (clause.last)
            return clauses;
    }
}

TEST(ClauseCutterAsWritten, CutsAtSentencesAndNotAtAbbreviations)
{
    EXPECT_EQ(
        ClausesOf(L"Am 3. Mai kam z.B. Dr. Braun. Er ging, und alle gingen mit. Gut!"),
        (std::vector<std::string>{"Am 3. Mai kam z.B. Dr. Braun.", "Er ging, und alle gingen mit.", "Gut!"}));
}

TEST(ClauseCutterAsWritten, EndsAParagraphThatHasNoFullStop)
{
    EXPECT_EQ(ClausesOf(L"Kapitel Eins\n\nEs war einmal"),
              (std::vector<std::string>{"Kapitel Eins.", "Es war einmal"}));
}

TEST(ClauseCutterAsWritten, CutsTextWithoutBlanks)
{
    EXPECT_EQ(ClausesOf(L"\u4F60\u597D\u3002\u518D\u89C1\u3002"),
              (std::vector<std::string>{"\xE4\xBD\xA0\xE5\xA5\xBD\xE3\x80\x82",
                                        "\xE5\x86\x8D\xE8\xA7\x81\xE3\x80\x82"}));
}

TEST(ClauseCutter, GivesClausesAgainThatWerePutBack)
{
    ClauseCutter cutter(L"One two. Three four. Five six.");
    std::deque<Clause> taken{cutter.Next(), cutter.Next()};
    const std::deque<Clause> expected = taken;
    cutter.PutBack(std::move(taken));
    EXPECT_EQ(cutter.Next(), expected[0]);
    EXPECT_EQ(cutter.Next(), expected[1]);
    EXPECT_EQ(cutter.Next().tokens.front().name, "Five");
}

} // namespace
} // namespace voxtrel::agent::speech
