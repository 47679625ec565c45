#include "speech/speech_markup.h"

#include "settings/memory_backend.h"
#include "settings/text_case.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace voxtrel::speech {
namespace {

constexpr wchar_t kDefaultPrefix[] = L"\\Spd=150\\\\Pit=150\\\\Vol=30000\\   ";

class SpeechMarkup : public testing::Test {
protected:
    SpeechMarkup()
    {
        store.SetApplicationName(L"Orvella");
        shared.Speed = 150;
        shared.Pitch = 150;
        shared.Volume = 30000;
    }

    // What BuildSpeechText appends after the prosody.
    std::wstring Body(std::wstring text, std::int16_t mode)
    {
        shared.Agent_Balloon_Always = mode;
        shared.PendingSpeech.clear();
        BuildSpeechText(text, shared, pronunciations);
        EXPECT_TRUE(shared.PendingSpeech.starts_with(kDefaultPrefix));
        return shared.PendingSpeech.substr(std::wstring_view(kDefaultPrefix).size());
    }
    void Pronounce(std::wstring_view written, std::wstring_view spoken)
    {
        store.SaveSetting(L"modify", written, spoken);
    }

    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    PronunciationList pronunciations{store};
    settings::SharedSettings shared;
};

TEST_F(SpeechMarkup, ShowsTextWithoutPronunciationsAsWritten)
{
    EXPECT_EQ(Body(L"Hello world", 0), L"Hello world ");
}

TEST_F(SpeechMarkup, MapsAListedWord)
{
    Pronounce(L"world", L"wurld");
    EXPECT_EQ(Body(L"Hello world", 0), L"Hello \\map=\"wurld\"=\"world\"\\ ");
    EXPECT_EQ(Body(L"Hello world", 1), L"Hello \\map=\"wurld\"=\"world\"\\ ");
    EXPECT_EQ(Body(L"Hello world", 2),
              L"\\map=\"Hello\"=\"\"\\\\map=\" \"=\"\"\\\\map=\"wurld\"=\"\"\\\\map=\" \"=\"\"\\");
}

TEST_F(SpeechMarkup, HidesASingleWordAndItsClosingBlankInModeOne)
{
    EXPECT_EQ(Body(L"Hello", 1), L"\\map=\"Hello\"=\"\"\\\\map=\" \"=\"\"\\");
}

struct SingleWordCase {
    const wchar_t* text;
    bool single;
};

constexpr SingleWordCase kSingleWordCases[] = {
    {L"", true},          {L"   ", true},          {L"  Hello  ", true}, {L"one two", false},
    {L"one\ntwo", true},  {L"one\ttwo", true},     {L"a, b", false},     {L"one-two", true},
    {L"\u00A0 a", false}, {L"one\u00A0two", true}, {L"\n \n", false},
};

TEST_F(SpeechMarkup, CountsOnlyBlanksForASingleWord)
{
    for (const auto& [text, single] : kSingleWordCases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        const bool hidden = Body(text, 1).ends_with(L"\\map=\" \"=\"\"\\");
        EXPECT_EQ(hidden, single);
    }
}

TEST_F(SpeechMarkup, HidesEveryTokenInModeTwo)
{
    EXPECT_EQ(Body(L"a b", 2), L"\\map=\"a\"=\"\"\\\\map=\" \"=\"\"\\\\map=\"b\"=\"\"\\\\map=\" \"=\"\"\\");
}

TEST_F(SpeechMarkup, WritesNoTokenInAnyOtherMode)
{
    Pronounce(L"Hello", L"hullo");
    for (const std::int16_t mode : {3, -1, 100, 32767, -32768})
        EXPECT_EQ(Body(L"Hello world", mode), L"") << mode;
}

TEST_F(SpeechMarkup, PausesInsideTheWordAtACarriageReturn)
{
    EXPECT_EQ(Body(L"one\r\ntwo", 0), L"one\r\\pau=600\\\ntwo ");
    EXPECT_EQ(Body(L"one\rtwo x", 0), L"one\r\\pau=600\\two x ");
    EXPECT_EQ(Body(L"one\rtwo\r", 2), L"\\map=\"one\r\\pau=600\\two\r\\pau=600\\\"=\"\"\\\\map=\" \"=\"\"\\");
    EXPECT_EQ(Body(L"\r\r", 0), L"\r\\pau=600\\\r\\pau=600\\ ");
}

TEST_F(SpeechMarkup, LooksUpAWordTogetherWithItsPause)
{
    Pronounce(L"one", L"wun");
    EXPECT_EQ(Body(L"one\r\none ", 0), L"one\r\\pau=600\\\n\\map=\"wun\"=\"one\"\\  ");
    Pronounce(L"ONE\r\\pau=600\\", L"first");
    EXPECT_EQ(Body(L"one\r\n", 0), L"\\map=\"first\"=\"one\r\\pau=600\\\"\\\n ");
}

TEST_F(SpeechMarkup, LooksUpSeparatorsToo)
{
    Pronounce(L"&", L"and");
    Pronounce(L"\n", L"new line");
    Pronounce(L" ", L"blank");
    Pronounce(L"é", L"e acute");
    EXPECT_EQ(Body(L"a&b\né", 0), L"a\\map=\"and\"=\"&\"\\b\\map=\"new line\"=\"\n\"\\\\map=\"e "
                                  L"acute\"=\"é\"\\\\map=\"blank\"=\" \"\\");
}

TEST_F(SpeechMarkup, KeepsDigitsCommasAndFullStopsInOneToken)
{
    EXPECT_EQ(Body(L"1,250.5 3.", 2),
              L"\\map=\"1,250.5\"=\"\"\\\\map=\" \"=\"\"\\\\map=\"3.\"=\"\"\\\\map=\" \"=\"\"\\");
}

struct TokenCase {
    const wchar_t* text;
    std::vector<std::wstring> tokens; // without the closing blank
};

const TokenCase kTokenCases[] = {
    {L"don't", {L"don't"}},
    {L"café", {L"café"}},
    {L"NAÏVE", {L"NAÏVE"}},
    {L"straße", {L"stra", L"ß", L"e"}},
    {L"a÷b×c", {L"a", L"÷", L"b", L"×", L"c"}},
    {L"Ÿz", {L"Ÿz"}},
    {L"\u212Bngstr\u00F6m", {L"\u212Bngstr\u00F6m"}},
    {L"3\u212A", {L"3\u212A"}},
    {L"łódź", {L"ł", L"ód", L"ź"}},
    {L"typist’s", {L"typist", L"’", L"s"}},
    {L"x😀y", {L"x", L"😀", L"y"}},
    {L"Ω", {L"Ω"}},
    {L"\\Vol=1\\", {L"\\", L"Vol", L"=", L"1", L"\\"}},
    {L"\"", {L"\""}},
};

TEST_F(SpeechMarkup, CutsTokensWhereLettersEnd)
{
    for (const auto& [text, tokens] : kTokenCases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        std::wstring expected;
        for (const std::wstring& token : tokens)
            expected += L"\\map=\"" + token + L"\"=\"\"\\";
        EXPECT_EQ(Body(text, 2), expected + L"\\map=\" \"=\"\"\\");
    }
}

TEST_F(SpeechMarkup, KeepsATornSurrogateAsASeparator)
{
    const std::wstring torn = {L'a', static_cast<wchar_t>(0xD83D), L'b'};
    EXPECT_EQ(Body(torn, 0), torn + L" ");
}

TEST_F(SpeechMarkup, FindsAWordUnderAnyCapitals)
{
    Pronounce(L"CAFÉ", L"kaffay");
    EXPECT_EQ(Body(L"a Café", 0), L"a \\map=\"kaffay\"=\"Café\"\\ ");
    EXPECT_EQ(Body(L"a café", 0), L"a \\map=\"kaffay\"=\"café\"\\ ");
    Pronounce(L"😀", L"grin");
    Pronounce(L"Я", L"ya");
    EXPECT_EQ(Body(L"😀 я", 0), L"\\map=\"grin\"=\"😀\"\\ \\map=\"ya\"=\"я\"\\ ");
}

TEST_F(SpeechMarkup, TakesAnEmptyPronunciationForNone)
{
    Pronounce(L"word", L"");
    EXPECT_EQ(Body(L"a word", 0), L"a word ");
}

TEST_F(SpeechMarkup, WritesQuotesAndBackslashesAsTheyAre)
{
    Pronounce(L"say", L"\"quoted\\\"");
    EXPECT_EQ(Body(L"say \"\\\"", 0), L"\\map=\"\"quoted\\\"\"=\"say\"\\ \"\\\" ");
}

TEST_F(SpeechMarkup, WritesOnlyPrefixAndBlankForAnEmptyText) { EXPECT_EQ(Body(L"", 0), L" "); }

TEST_F(SpeechMarkup, LeavesTheSentinelOnTheCallersText)
{
    std::wstring text = L"Hello";
    BuildSpeechText(text, shared, pronunciations);
    EXPECT_EQ(text, L"Hello x");
    shared.Agent_Balloon_Always = 3;
    BuildSpeechText(text, shared, pronunciations);
    EXPECT_EQ(text, L"Hello x x");
}

TEST_F(SpeechMarkup, PutsTagsProsodyAndStyleInFront)
{
    shared.SAPITags = L"\\Rst\\";
    shared.Speed = -5;
    shared.Pitch = 32767;
    shared.Volume = 65535;
    shared.VoiceType = L"\\chr=\"Whisper\"\\";
    std::wstring text = L"Hi";
    BuildSpeechText(text, shared, pronunciations);
    EXPECT_EQ(shared.PendingSpeech, L"\\Rst\\\\Spd=-5\\\\Pit=32767\\\\Vol=65535\\  \\chr=\"Whisper\"\\ Hi ");
}

TEST_F(SpeechMarkup, AppendsToWhatIsPending)
{
    std::wstring one = L"one";
    std::wstring two = L"two";
    BuildSpeechText(one, shared, pronunciations);
    BuildSpeechText(two, shared, pronunciations);
    EXPECT_EQ(shared.PendingSpeech, std::wstring(kDefaultPrefix) + L"one " + kDefaultPrefix + L"two ");
}

TEST_F(SpeechMarkup, NoticesEveryChangeOfTheList)
{
    EXPECT_EQ(Body(L"x one", 0), L"x one ");
    Pronounce(L"one", L"wun");
    EXPECT_EQ(Body(L"x one", 0), L"x \\map=\"wun\"=\"one\"\\ ");
    Pronounce(L"ONE", L"won");
    EXPECT_EQ(Body(L"x one", 0), L"x \\map=\"won\"=\"one\"\\ ");
    store.DeleteSetting(L"modify", L"one");
    EXPECT_EQ(Body(L"x one", 0), L"x one ");
    Pronounce(L"x", L"ex");
    store.DeleteSection(L"modify");
    EXPECT_EQ(Body(L"x one", 0), L"x one ");
}

// The same rules in another manner: the text becomes a list of code points, the list becomes a list of
// tokens, and each token is looked up by going through every pair.
class PlainModel {
public:
    std::vector<std::pair<std::wstring, std::wstring>> pairs;

    std::wstring Body(const std::wstring& text, int mode) const
    {
        const bool single = Trimmed(text).find(L' ') == std::wstring::npos;
        std::wstring body;
        for (const std::wstring& token : Tokens(text + L" "))
            body += Written(token, mode, single);
        return body;
    }

private:
    static std::wstring Trimmed(std::wstring text)
    {
        while (!text.empty() && text.front() == L' ')
            text.erase(text.begin());
        while (!text.empty() && text.back() == L' ')
            text.pop_back();
        return text;
    }

    static std::vector<std::wstring> CodePoints(const std::wstring& text)
    {
        std::vector<std::wstring> points;
        for (const wchar_t c : text) {
            const bool second = sizeof(wchar_t) == 2 && c >= 0xDC00 && c <= 0xDFFF && !points.empty() &&
                                points.back().size() == 1 && points.back()[0] >= 0xD800 &&
                                points.back()[0] <= 0xDBFF;
            if (second)
                points.back() += c;
            else
                points.emplace_back(1, c);
        }
        return points;
    }

    // Written out: the letters and their capitals, and what else stays inside a word.
    static bool InWord(const std::wstring& point)
    {
        static const std::wstring inside = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                           L"àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿ"
                                           L"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸ"
                                           L"\u212A\u212B\u0130'1234567890,.";
        return point.size() == 1 && inside.find(point) != std::wstring::npos;
    }

    static std::vector<std::wstring> Tokens(const std::wstring& text)
    {
        std::vector<std::wstring> tokens;
        std::wstring word;
        for (const std::wstring& point : CodePoints(text)) {
            if (InWord(point)) {
                word += point;
            } else if (point == L"\r") {
                word += L"\r\\pau=600\\";
            } else {
                if (!word.empty())
                    tokens.push_back(word);
                tokens.push_back(point);
                word.clear();
            }
        }
        return tokens;
    }

    std::wstring Pronunciation(const std::wstring& token) const
    {
        for (const auto& [written, spoken] : pairs) {
            if (settings::SimpleLower(written) == settings::SimpleLower(token))
                return spoken;
        }
        return {};
    }

    std::wstring Written(const std::wstring& token, int mode, bool single) const
    {
        const std::wstring spoken = Pronunciation(token);
        const std::wstring said = spoken.empty() ? token : spoken;
        if (mode == 2 || (mode == 1 && single))
            return L"\\map=\"" + said + L"\"=\"\"\\";
        if (mode != 0 && mode != 1)
            return {};
        return spoken.empty() ? token : L"\\map=\"" + spoken + L"\"=\"" + token + L"\"\\";
    }
};

TEST_F(SpeechMarkup, AgreesWithAPlainModelOnRandomTexts)
{
    const std::vector<std::wstring> pieces = {
        L"a",
        L"Hello",
        L"WORLD",
        L"é",
        L"É",
        L"ÿ",
        L"Ÿ",
        L"ß",
        L"÷",
        L"'",
        L"7",
        L",",
        L".",
        L" ",
        L"  ",
        L"\r",
        L"\r\n",
        L"\n",
        L"\t",
        L"\\",
        L"\"",
        L"\\pau=600\\",
        L"😀",
        L"\u212A",
        L"\u212B",
        L"\u0130",
        L"ł",
        L"я",
        L"Ω",
        L"-",
        L"`",
        L"{",
        L"@",
        L"[",
        L"x",
        L"\u00A0",
        L"\u0085",
        L"’",
        L"𐐀",
        std::wstring(1, static_cast<wchar_t>(0xD83D)),
        std::wstring(1, static_cast<wchar_t>(0xDE00)),
        std::wstring(1, L'\0'),
        L"À",
        L"Ö",
        L"×",
        L"Ø",
        L"Þ",
        L"þ",
        L"\u007F",
    };
    std::mt19937 random(1234567);
    const auto randomText = [&](std::size_t longest) {
        std::wstring text;
        for (std::size_t i = random() % (longest + 1); i > 0; --i)
            text += pieces[random() % pieces.size()];
        return text;
    };
    for (int round = 0; round < 400; ++round) {
        store.DeleteSection(L"modify");
        PlainModel model;
        for (std::size_t i = random() % 12; i > 0; --i)
            Pronounce(randomText(2), randomText(2));
        model.pairs = store.GetAllSettings(L"modify");
        for (int i = 0; i < 20; ++i) {
            const std::wstring text = randomText(i % 2 == 0 ? 3 : 40);
            const int mode = static_cast<int>(random() % 5) - 1;
            ASSERT_EQ(Body(text, static_cast<std::int16_t>(mode)), model.Body(text, mode))
                << "round " << round << ", mode " << mode << ", text " << testing::PrintToString(text);
        }
    }
}

struct LetterCase {
    char32_t codePoint;
    bool letter;
};

constexpr LetterCase kLetterCases[] = {
    {U'a', true},  {U'Z', true},   {U'é', true},  {U'É', true},    {U'\'', true},    {0xE0, true},
    {0xF6, true},  {0xF8, true},   {0xFF, true},  {0xD8, true},    {0x178, true},    {0x212A, true},
    {0x130, true}, {U'ß', false},  {U'÷', false}, {U'×', false},   {U'7', false},    {U',', false},
    {U'.', false}, {U'`', false},  {U'{', false}, {U'@', false},   {U'[', false},    {U' ', false},
    {0, false},    {0x100, false}, {U'я', false}, {0x2019, false}, {0x1F600, false}, {0xD83D, false},
};

TEST(IsLetter, FollowsTheThreeRanges)
{
    for (const auto& [codePoint, letter] : kLetterCases) {
        SCOPED_TRACE(static_cast<unsigned>(codePoint));
        EXPECT_EQ(IsLetter(codePoint), letter);
    }
}

} // namespace
} // namespace voxtrel::speech
