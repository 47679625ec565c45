#include "screenreading/spoken_words.h"

#include "settings/memory_backend.h"

#include <gtest/gtest.h>

namespace voxtrel::screenreading {
namespace {

class SpokenWordsTest : public testing::Test {
protected:
    SpokenWordsTest() { store.SetApplicationName(L"Orvella"); }

    std::wstring Words(std::wstring_view text) { return SpokenWords(text, pronunciations); }

    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    speech::PronunciationList pronunciations{store};
};

struct WordsCase {
    const wchar_t* text;
    const wchar_t* words;
};

// A word, then a blank before and after each separator.
constexpr WordsCase kCases[] = {
    {L"", L"   "},
    {L"OK", L"OK   "},
    {L"OK ", L"OK      "},
    {L"a,b", L"a , b   "},
    {L"a.b", L"a . b   "},
    {L"1,250.5 kg", L"1,250.5   kg   "},
    {L"1.2.3.4", L"1.2.3 . 4   "},
    {L"1,a", L"1,a   "},
    {L"don't", L"don't   "},
    {L"'5,6", L"'5 , 6   "},
    {L",5", L" , 5   "},
    {L"a\rb", L"a\r\\pau=600\\b   "},
    {L"5\r6,7", L"5\r\\pau=600\\6 , 7   "},
    {L"a\nb", L"a \n b   "},
    {L"na\u00EFve \u00C9t\u00E9", L"na\u00EFve   \u00C9t\u00E9   "},
    {L"stra\u00DFe", L"stra \u00DF e   "},
    {L"say \"x\"", L"say    \" x \"    "},
    {L"a\U0001F600b", L"a \U0001F600 b   "},
    {L"1e5,2", L"1e5,2   "},
};

TEST_F(SpokenWordsTest, SetsEachWordAndSeparatorOffByBlanks)
{
    for (const auto& [text, words] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Words(text), words);
    }
}

TEST_F(SpokenWordsTest, SaysWordsAndSeparatorsAsPronounced)
{
    store.SaveSetting(L"modify", L"Mr", L"mister");
    store.SaveSetting(L"modify", L"&", L"and");
    store.SaveSetting(L"modify", L"1,250.5", L"a lot");
    store.SaveSetting(L"modify", L"none", L"");
    EXPECT_EQ(Words(L"MR & none 1,250.5"), L"mister    and    none   a lot   ");
}

TEST(ScreenMarkup, PutsTheVoiceInFrontAndHidesTheWords)
{
    settings::SharedSettings shared;
    shared.SAPITags = L"\\Ctx=\"E-mail\"\\"; // not used here
    shared.VoiceType = L"\\chr=\"Whisper\"\\";
    shared.Speed = 150;
    shared.Pitch = -1;
    shared.Volume = 65535;
    EXPECT_EQ(ScreenMarkup(L"OK   ", shared),
              L"\\chr=\"Whisper\"\\\\Spd=150\\\\Pit=-1\\\\Vol=65535\\\\map=\"OK   \"=\"\"\\");
}

} // namespace
} // namespace voxtrel::screenreading
