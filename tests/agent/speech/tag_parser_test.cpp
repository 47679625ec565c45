#include "agent/speech/tag_parser.h"

#include "agent/speech/speech_engine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace voxtrel::agent::speech {
namespace {

// The pieces of a markup, each in a short form: text as it is, tags in angle brackets. Neighbouring text is
// one.
std::wstring Pieces(std::wstring_view markup)
{
    std::wstring all;
    TagParser parser(markup);
    for (MarkupToken token = parser.Next(); token.kind != MarkupToken::Kind::End; token = parser.Next()) {
        const std::wstring number = std::to_wstring(token.number);
        switch (token.kind) {
        case MarkupToken::Kind::Text:
            all += token.text;
            break;
        case MarkupToken::Kind::Mark:
            all += L"<mark " + number + L">";
            break;
        case MarkupToken::Kind::Pause:
            all += L"<pause " + number + L">";
            break;
        case MarkupToken::Kind::Pitch:
            all += L"<pitch " + number + L">";
            break;
        case MarkupToken::Kind::Speed:
            all += L"<speed " + number + L">";
            break;
        case MarkupToken::Kind::Volume:
            all += L"<volume " + number + L">";
            break;
        case MarkupToken::Kind::Style:
            all += L"<style " + std::to_wstring(static_cast<int>(token.style)) + L">";
            break;
        case MarkupToken::Kind::Context:
            all += L"<context " + std::to_wstring(static_cast<int>(token.context)) + L">";
            break;
        case MarkupToken::Kind::Emphasis:
            all += L"<emphasis>";
            break;
        case MarkupToken::Kind::Reset:
            all += L"<reset>";
            break;
        case MarkupToken::Kind::Repeat:
            all += L"<repeat>";
            break;
        case MarkupToken::Kind::MapBegin:
            all += L"<map>";
            break;
        case MarkupToken::Kind::MapEnd:
            all += L"</map " + std::wstring(token.text) + L">";
            break;
        case MarkupToken::Kind::End:
            break;
        }
    }
    return all;
}

struct PieceCase {
    const wchar_t* markup;
    const wchar_t* pieces;
};

void ExpectPieces(std::initializer_list<PieceCase> cases)
{
    for (const auto& [markup, pieces] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(markup)));
        EXPECT_EQ(Pieces(markup), pieces);
    }
}

TEST(TagParser, ReadsEveryTag)
{
    ExpectPieces({
        {L"", L""},
        {L"Hello", L"Hello"},
        {L"\\Mrk=7\\", L"<mark 7>"},
        {L"\\pau=200\\", L"<pause 200>"},
        {L"\\Pit=100\\", L"<pitch 100>"},
        {L"\\SPD=100\\", L"<speed 100>"},
        {L"\\Vol=0\\", L"<volume 0>"},
        {L"\\chr=\"Normal\"\\", L"<style 0>"},
        {L"\\Chr=\"whisper\"\\", L"<style 1>"},
        {L"\\chr=\"Monotone\"\\", L"<style 2>"},
        {L"\\Ctx=\"Unknown\"\\", L"<context 0>"},
        {L"\\Ctx=\"Address\"\\", L"<context 1>"},
        {L"\\Ctx=\"E-mail\"\\\\ctx=\"Email\"\\", L"<context 2><context 2>"},
        {L"\\Emp\\now", L"<emphasis>now"},
        {L"\\Rst\\", L"<reset>"},
        {L"\\Lst\\", L"<repeat>"},
        {L"\\map=\"wurld\"=\"world\"\\", L"<map>wurld</map world>"},
    });
}

TEST(TagParser, ClampsWhatIsOutOfRange)
{
    ExpectPieces({
        {L"\\Pit=1\\\\Pit=9999\\", L"<pitch 50><pitch 400>"},
        {L"\\Spd=0\\\\Spd=251\\", L"<speed 50><speed 250>"},
        {L"\\Vol=-1\\\\Vol=65536\\", L"<volume 0><volume 65535>"},
        {L"\\Pau=0\\\\Pau=2551\\", L"<pause 10><pause 2550>"},
        {L"\\Pit=99999999999999999999999999\\", L"<pitch 400>"},
        {L"\\Spd= 150\\", L"<speed 150>"},
    });
}

TEST(TagParser, TakesBookmarksOfTheAllowedNumbersOnly)
{
    ExpectPieces({
        {L"\\Mrk=1\\", L"<mark 1>"},
        {L"\\Mrk=2147483645\\", L"<mark 2147483645>"},
        {L"a\\Mrk=0\\b", L"ab"},
        {L"a\\Mrk=-1\\b", L"ab"},
        {L"a\\Mrk=2147483646\\b", L"ab"},
        {L"a\\Mrk=2147483647\\b", L"ab"},
        {L"a\\Mrk=99999999999999999999\\b", L"ab"},
    });
}

TEST(TagParser, SaysNothingForABadParameterOfAKnownTag)
{
    ExpectPieces({
        {L"a\\Pau=abc\\b", L"ab"},
        {L"a\\Mrk=\\b", L"ab"},
        {L"a\\Mrk\\b", L"ab"},
        {L"a\\Pit=12x\\b", L"ab"},
        {L"a\\Pit=1.5\\b", L"ab"},
        {L"a\\chr=\"Singing\"\\b", L"ab"},
        {L"a\\Rst=1\\b", L"ab"},
        {L"a\\map=b\\c", L"ac"},
        {L"a\\map\\b", L"ab"},
    });
}

TEST(TagParser, LeavesWhatIsNoTagAsItStands)
{
    ExpectPieces({
        {L"C:\\temp\\x", L"C:\\temp\\x"},
        {L"\\ Rst \\", L"\\ Rst \\"},
        {L"\\", L"\\"},
        {L"a\\", L"a\\"},
        {L"\\Mrk=5", L"\\Mrk=5"},
        {L"\\Mrk5\\", L"\\Mrk5\\"},
        {L"\\Marks=5\\", L"\\Marks=5\\"},
        {L"\\Mr=5\\", L"\\Mr=5\\"},
        {L"\\chr=\"Whisper\"x\\", L"\\chr=\"Whisper\"x\\"},
        {L"\\chr=\"Whisper", L"\\chr=\"Whisper"},
        {L"\\map=\"a\"", L"\\map=\"a\""},
        {L"\\map=\"a\"=\"b\"", L"\\map=\"a\"=\"b\""},
        {L"\\map=\"a\"=\"b\"c\\", L"\\map=\"a\"=\"b\"c\\"},
    });
}

TEST(TagParser, ReadsTwoBackslashesAsOneOutsideOfTags)
{
    ExpectPieces({
        {L"a\\\\b", L"a\\b"},
        {L"\\\\Mrk=5\\", L"\\Mrk=5\\"},
        {L"\\\\\\Mrk=5\\", L"\\<mark 5>"},
        {L"\\Spd=150\\\\Pit=150\\", L"<speed 150><pitch 150>"},
        {L"\\Spd=150\\\\\\Pit=150\\", L"<speed 150>\\Pit=150\\"},
        {L"\\map=\"a\\\\b\"=\"c\"\\", L"<map>a\\b</map c>"},
    });
}

TEST(TagParser, PassesWhatTheAssistantSends)
{
    ExpectPieces({
        {L"\\Spd=150\\\\Pit=150\\\\Vol=30000\\  \\chr=\"Whisper\"\\ Hello",
         L"<speed 150><pitch 150><volume 30000>  <style 1> Hello"},
        {L"\\map=\"Hello\"=\"\"\\\\map=\" \"=\"\"\\", L"<map>Hello</map ><map> </map >"},
        {L"\\map=\"\\Mrk=500001\\Hello \\Mrk=500007\\world \\Mrk=999999999\\ \"=\"\"\\",
         L"<map><mark 500001>Hello <mark 500007>world <mark 999999999> </map >"},
        {L"\\map=\"\\Mrk=500001\\Hello;\\pau=200\\\\Mrk=999999999\\;\\pau=200\\\"=\"\"\\",
         L"<map><mark 500001>Hello;<pause 200><mark 999999999>;<pause 200></map >"},
        {L"word\r\\pau=600\\\n", L"word\r<pause 600>\n"},
        {L"\\Vol=30000\\\\map=\"a\"=\"\"\\", L"<volume 30000><map>a</map >"},
        {L"\\map=\"x\"=\"word\r\\pau=600\\\"\\", L"<map>x</map word\r\\pau=600\\>"},
    });
}

TEST(TagParser, EndsAMapAtTheSeparatorAndNowhereElse)
{
    ExpectPieces({
        {L"\\map=\"say \"hi\" to\"=\"\"\\", L"<map>say \"hi\" to</map >"},
        {L"\\map=\"a\"=\"b\" c\"=\"d\"\\", L"<map>a\"=\"b\" c</map d>"},
        {L"\\map=\"if (x==\"=\") y\"=\"\"\\", L"<map>if (x==\"=\") y</map >"},
        {L"\\map=\"a=b\"=\"\"\\", L"<map>a=b</map >"},
        {L"\\map=\"\"=\"b\"\\", L"<map></map b>"},
        {L"\\map=\"\\chr=\"Whisper\"\\ a\"=\"b\"\\", L"<map><style 1> a</map b>"},
        {L"\\map=\"a \\map=\"b\"=\"c\"\\ d", L"<map>a \\map=\"b</map c> d"},
        {L"\\map=\"\\Mrk=5\"=\"b\"\\", L"<map>\\Mrk=5</map b>"},
        {L"\\map=\"a\\\"=\"b\"\\", L"<map>a\\</map b>"},
        {L"\\map=\"a\"=\"b\"\\\\map=\"c\"=\"d\"\\", L"<map>a</map b><map>c</map d>"},
    });
}

TEST(TagParser, KnowsTheBalloonPartOfAMapAtItsBeginning)
{
    const std::wstring markup = L"\\map=\"wurld\"=\"world\"\\";
    TagParser parser(markup);
    const MarkupToken begin = parser.Next();
    EXPECT_TRUE(begin.balloonKnown);
    EXPECT_EQ(begin.text, L"world");
}

TEST(TagParser, FindsTheEndOfABookInsideOfAMap)
{
    std::wstring book;
    for (int i = 1; i <= 40000; ++i)
        book += L"\\Mrk=" + std::to_wstring(i) + L"\\word ";
    const std::wstring markup = L"\\map=\"" + book + L"\"=\"shown\"\\ after";
    TagParser parser(markup);
    EXPECT_FALSE(parser.Next().balloonKnown);
    int marks = 0;
    MarkupToken token = parser.Next();
    for (; token.kind != MarkupToken::Kind::MapEnd && token.kind != MarkupToken::Kind::End;
         token = parser.Next())
        marks += token.kind == MarkupToken::Kind::Mark ? 1 : 0;
    EXPECT_EQ(marks, 40000);
    EXPECT_EQ(token.text, L"shown");
    EXPECT_EQ(parser.Next().text, L" after");
}

std::wstring Repeated(std::wstring_view piece, std::size_t length)
{
    std::wstring text;
    while (text.size() < length)
        text += piece;
    return text;
}

// A search that starts over at every tag needs hours here, which no test is given.
TEST(TagParser, TakesLinearTimeOnTraps)
{
    constexpr std::size_t kLength = 4 << 20;
    for (const std::wstring_view trap :
         {L"\\map=\"", L"\\map=\"=\"", L"\"=\"", L"\\map=\"a\"=\"", L"\\chr=\"", L"\\pau=",
          L"\\map=\"a\"=\"b\"", L"\\", L"\\Mrk=12345678901234567890", L"\\map=\"\\chr=\"", L"\\map=\"\"=\"\\",
          L"x"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(trap)));
        const std::wstring markup = Repeated(trap, kLength);
        TagParser parser(markup);
        while (parser.Next().kind != MarkupToken::Kind::End) {
        }
        EXPECT_EQ(parser.Position(), markup.size());
    }
}

TEST(TagParser, CutsNoCharacterApart)
{
    const std::wstring face = L"\U0001F600";
    const std::wstring markup = L"x" + Repeated(face, 4000);
    std::wstring read;
    TagParser parser(markup);
    for (MarkupToken token = parser.Next(); token.kind != MarkupToken::Kind::End; token = parser.Next()) {
        EXPECT_EQ((token.text.size() - (read.empty() ? 1 : 0)) % face.size(), 0u);
        read += token.text;
    }
    EXPECT_EQ(read, markup);
}

std::size_t PickFirst(std::size_t) { return 0; }
std::size_t PickLast(std::size_t count) { return count - 1; }
std::size_t PickSecond(std::size_t) { return 1; }

TEST(PickAlternative, SplitsAtBarsOutsideOfTags)
{
    EXPECT_EQ(PickAlternative(L"a|b|c", PickFirst), L"a");
    EXPECT_EQ(PickAlternative(L"a|b|c", PickSecond), L"b");
    EXPECT_EQ(PickAlternative(L"a|b|c", PickLast), L"c");
    EXPECT_EQ(PickAlternative(L"\\Pit=100\\a|b", PickLast), L"b");
    EXPECT_EQ(PickAlternative(L"\\map=\"a|b\"=\"c|d\"\\|e", PickFirst), L"\\map=\"a|b\"=\"c|d\"\\");
    EXPECT_EQ(PickAlternative(L"no bar", PickLast), L"no bar");
}

TEST(BalloonText, ShowsWordsAndBalloonParts)
{
    const PieceCase cases[] = {
        {L"", L""},
        {L"\\Spd=150\\  Hello \\Mrk=5\\world ", L"Hello world"},
        {L"a \\map=\"wurld\"=\"world\"\\, b", L"a world, b"},
        {L"\\map=\"Hello\"=\"\"\\\\map=\" \"=\"\"\\", L""},
        {L"one\r\\pau=600\\\ntwo", L"one\ntwo"},
        {L"one\n\ntwo", L"one\n\ntwo"},
        {L"C:\\temp\\x", L"C:\\temp\\x"},
        {L"\\map=\"x\"=\"word\\pau=600\\\"\\", L"word"},
        {L"a & b\x01", L"a & b"},
    };
    for (const auto& [markup, shown] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(markup)));
        EXPECT_EQ(BalloonText(markup, 1000), shown);
    }
}

TEST(BalloonText, StopsAtTheLengthAndAtWholeCharacters)
{
    EXPECT_EQ(BalloonText(L"Hello world", 7), L"Hello w");
    EXPECT_EQ(BalloonText(L"Hello world", 0), L"");
    const std::wstring face = L"\U0001F600";
    EXPECT_EQ(BalloonText(face + face, face.size() * 2 - 1), face);
}

} // namespace
} // namespace voxtrel::agent::speech
