#include "agent/speech/clause_cutter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

namespace voxtrel::agent::speech {
namespace {

std::vector<Clause> Clauses(std::wstring_view markup)
{
    std::vector<Clause> clauses;
    ClauseCutter cutter(markup);
    do {
        clauses.push_back(cutter.Next());
    } while (!clauses.back().last);
    return clauses;
}

// All clauses as text: words, cues before them in angle brackets, a bar after each clause, pauses in braces.
std::wstring Told(std::wstring_view markup)
{
    std::wstring told;
    for (const Clause& clause : Clauses(markup)) {
        auto cue = clause.cues.begin();
        for (std::size_t i = 0; i <= clause.tokens.size(); ++i) {
            for (; cue != clause.cues.end() && cue->token == i; ++cue) {
                told += cue->kind == Cue::Kind::Mark          ? L"<" + std::to_wstring(cue->number) + L">"
                        : cue->kind == Cue::Kind::BalloonWord ? L"<" + cue->text + L">"
                                                              : L"<br>";
            }
            if (i < clause.tokens.size()) {
                const std::string& name = clause.tokens[i].name;
                told += std::wstring(name.begin(), name.end()) + (clause.tokens[i].emphasized ? L"! " : L" ");
            }
        }
        if (clause.pauseMs > 0)
            told += L"{" + std::to_wstring(clause.pauseMs) + L"}";
        told += clause.last ? L"." : L"|";
    }
    return told;
}

struct ToldCase {
    const wchar_t* markup;
    const wchar_t* told;
};

void ExpectTold(std::initializer_list<ToldCase> cases)
{
    for (const auto& [markup, told] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(markup)));
        EXPECT_EQ(Told(markup), told);
    }
}

TEST(ClauseCutter, GivesEachWordItsBalloonWord)
{
    ExpectTold({
        {L"", L"."},
        {L"Hello world", L"<Hello>Hello <world>world ."},
        {L"Hello, you!", L"<Hello,>Hello <you!>you |."},
        {L"one\ntwo", L"<one>one <br><two>two ."},
        {L"one\r\ntwo", L"<one>one <br><two>two ."},
        {L"one\r\\pau=600\\\ntwo", L"<one>one <br>{600}|<two>two ."},
        {L"\\map=\"wurld\"=\"world\"\\ x", L"<world>wurld <x>x ."},
        {L"\\map=\"one two three\"=\"a b\"\\", L"<a b>one two three ."},
        {L"\\map=\"wurld\"=\"world\"\\, x", L"<world,>wurld <x>x ."},
        {L"\\map=\"a b\"=\"\"\\", L"a b ."},
        {L"\\map=\"\"=\"shown\"\\ x", L"<shown><x>x ."},
        {L"\\map=\"x\"=\"word\r\\pau=600\\\"\\", L"<word>x <br>."},
        {L"a \U0001F600 b", L"<a>a <\U0001F600><b>b ."},
    });
}

TEST(ClauseCutter, PutsMarksBeforeTheNextWord)
{
    ExpectTold({
        {L"\\map=\"\\Mrk=500001\\Hello \\Mrk=500007\\world \\Mrk=999999999\\ \"=\"\"\\",
         L"<500001>Hello <500007>world <999999999>."},
        {L"\\map=\"\\Mrk=1\\Hello;\\pau=200\\\\Mrk=2\\world;\\pau=200\\\\Mrk=9\\;\\pau=200\\\"=\"\"\\",
         L"<1>Hello |{200}|<2>world |{200}|<9>{200}|."},
        {L"\\Mrk=1\\  ", L"<1>."},
        {L"\\Mrk=1\\\\Mrk=2\\", L"<1><2>."},
        {L"\\Mrk=1\\;\\Mrk=2\\", L"<1><;><2>."},
        {L"wo\\Mrk=1\\rd next", L"<word>word <1><next>next ."},
        {L"\"\\Mrk=1\\Hello", L"<\"Hello><1>Hello ."},
        {L"a\\Mrk=1\\", L"<a>a <1>."},
        {L"One. \\Mrk=1\\Two.", L"<One.>One |<1><Two.>Two |."},
        {L"One\\Mrk=1\\\\pau=100\\\\Mrk=2\\two", L"<One>One <1>{100}|<2><two>two ."},
    });
}

TEST(ClauseCutter, KeepsWordsTogetherThatAreMappedInPieces)
{
    ExpectTold({
        {L"\\map=\"don\"=\"\"\\\\map=\"\u2019\"=\"\"\\\\map=\"t\"=\"\"\\", L"don't ."},
        {L"\\map=\"stra\"=\"\"\\\\map=\"\u00DF\"=\"\"\\\\map=\"e\"=\"\"\\", L"strasse ."},
        {L"\\map=\"$\"=\"\"\\\\map=\"5\"=\"\"\\", L"$5 ."},
        {L"\\map=\"wurld\"=\"world\"\\\\map=\"comma\"=\",\"\\", L"<world,>wurld comma ."},
        {L"C\\map=\"hash\"=\"#\"\\", L"<C#>C hash ."},
    });
}

TEST(ClauseCutter, CutsWhereTheVoiceChanges)
{
    const auto clauses = Clauses(L"one \\Pit=100\\two \\Pit=100\\three \\Rst\\four");
    ASSERT_EQ(clauses.size(), 3u);
    EXPECT_EQ(clauses[0].prosody.pitch, 150);
    EXPECT_EQ(clauses[1].prosody.pitch, 100);
    EXPECT_EQ(clauses[1].tokens.size(), 2u);
    EXPECT_EQ(clauses[2].prosody, Prosody());
}

TEST(ClauseCutter, EmphasisesTheNextWordOnly)
{
    ExpectTold({{L"a \\Emp\\very big b", L"<a>a <very>very! <big>big <b>b ."}});
}

TEST(ClauseCutter, LetsAPauseStandInPlaceOfPunctuation)
{
    const auto clauses = Clauses(L"One. \\pau=100\\ ; \\pau=50\\ . Two. Three");
    ASSERT_EQ(clauses.size(), 5u);
    EXPECT_EQ(clauses[1].pauseMs, 100);
    EXPECT_EQ(clauses[2].pauseMs, 50);
    EXPECT_EQ(clauses[3].before, Break::None);
    EXPECT_EQ(clauses[4].before, Break::Sentence);
}

TEST(ClauseCutter, EndsAParagraphAtAnEmptyLine)
{
    const auto clauses = Clauses(L"Heading\r\n\r\nText");
    ASSERT_EQ(clauses.size(), 2u);
    EXPECT_EQ(clauses[1].before, Break::Paragraph);
    EXPECT_EQ(Clauses(L"two\r\nlines").size(), 1u);
}

TEST(ClauseCutter, KeepsTheFirstClauseShort)
{
    const auto clauses =
        Clauses(L"This, as you will see, goes on and on and on without a stop for a very long while");
    EXPECT_LE(clauses[0].tokens.size(), 6u);
}

TEST(ClauseCutter, CutsTextWithoutAnyStop)
{
    std::wstring text;
    for (int i = 0; i < 1000; ++i)
        text += L"word ";
    for (const Clause& clause : Clauses(text))
        EXPECT_LE(clause.tokens.size(), 30u);
}

TEST(ClauseCutter, BearsAMegabyteWithoutABlank)
{
    const std::wstring text(1 << 20, L'x');
    std::size_t letters = 0;
    for (const Clause& clause : Clauses(text)) {
        EXPECT_LE(clause.tokens.size(), 64u);
        for (const SpokenToken& token : clause.tokens)
            letters += token.name.size();
    }
    EXPECT_EQ(letters, text.size());
}

// A book must not be read before its first clause.
TEST(ClauseCutter, ReadsNoFurtherThanItsClause)
{
    std::wstring book;
    while (book.size() < 10'000'000)
        book += L"\\Mrk=500001\\Hello \\Mrk=500007\\world. ";
    const std::wstring markup = L"\\map=\"" + book + L"\"=\"\"\\";
    ClauseCutter cutter(markup);
    EXPECT_FALSE(cutter.Next().tokens.empty());
    EXPECT_LT(cutter.Position(), 2000u);
}

// Random markup out of pieces whose words and marks are known.
class RandomMarkup {
public:
    explicit RandomMarkup(unsigned seed) : random_(seed)
    {
        while (markup_.size() < 400) {
            switch (random_() % 10) {
            case 0:
                markup_ += L"\\Pit=" + std::to_wstring(50 + random_() % 300) + L"\\";
                break;
            case 1:
                markup_ += L"\\pau=" + std::to_wstring(10 + random_() % 300) + L"\\";
                break;
            case 2:
                AddMap();
                break;
            case 3:
                markup_ += L"\r\n";
                break;
            case 4:
                markup_ += L"; ";
                break;
            case 5:
                AddMark();
                break;
            default:
                AddWord();
            }
        }
    }

    std::wstring markup_;
    std::vector<std::string> words_;
    std::vector<std::pair<std::int32_t, std::size_t>> marks_; // number and index of the next word

private:
    void AddWord()
    {
        static constexpr const wchar_t* kEnds[] = {L" ", L" ", L" ", L", ", L". ", L"? ", L"\n"};
        std::string word;
        for (std::size_t length = 2 + random_() % 6; length > 0; --length)
            word += static_cast<char>('a' + random_() % 26);
        word += "q"; // no abbreviation ends so
        markup_ += std::wstring(word.begin(), word.end()) + kEnds[random_() % std::size(kEnds)];
        words_.push_back(word);
    }

    void AddMark()
    {
        const auto number = static_cast<std::int32_t>(1 + random_() % 2000000000);
        markup_ += L"\\Mrk=" + std::to_wstring(number) + L"\\";
        marks_.emplace_back(number, words_.size());
    }

    void AddMap()
    {
        markup_ += L" \\map=\"";
        for (std::size_t pieces = random_() % 4; pieces > 0; --pieces)
            random_() % 3 == 0 ? AddMark() : AddWord();
        markup_ += random_() % 2 == 0 ? L"\"=\"\"\\ " : L"\"=\"in the balloon\"\\ ";
    }

    std::mt19937 random_;
};

TEST(ClauseCutter, LosesAndRepeatsNothing)
{
    for (unsigned seed = 0; seed < 2000; ++seed) {
        const RandomMarkup model(seed);
        std::vector<std::string> words;
        std::vector<std::pair<std::int32_t, std::size_t>> marks;
        for (const Clause& clause : Clauses(model.markup_)) {
            std::size_t last = 0;
            for (const Cue& cue : clause.cues) {
                ASSERT_GE(cue.token, last);
                ASSERT_LE(cue.token, clause.tokens.size());
                last = cue.token;
                if (cue.kind == Cue::Kind::Mark)
                    marks.emplace_back(cue.number, words.size() + cue.token);
            }
            for (const SpokenToken& token : clause.tokens)
                words.push_back(token.name);
        }
        ASSERT_EQ(words, model.words_) << seed << testing::PrintToString(model.markup_);
        ASSERT_EQ(marks, model.marks_) << seed << testing::PrintToString(model.markup_);
    }
}

} // namespace
} // namespace voxtrel::agent::speech
