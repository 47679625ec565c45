#include "agent/voices/phrase_markup.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::voices {
namespace {

using speech::Phrase;

const Phrase kPhrase{.words = {{L"M\u00FCller"}, {L"&", true}, {L"<S\u00F6hne>."}}, .prosody = {}};

TEST(PlainMarkup, CountsCharactersAndNotBytes)
{
    const PhraseMarkup markup = PlainMarkup(kPhrase);
    EXPECT_EQ(markup.text, "M\xC3\xBCller & <S\xC3\xB6hne>.");
    EXPECT_EQ(markup.offsets, (std::vector<std::size_t>{0, 7, 9}));
    EXPECT_FALSE(markup.isXml);
}

TEST(EmphasizedMarkup, EscapesAndEmphasizes)
{
    const PhraseMarkup markup = EmphasizedMarkup(kPhrase);
    EXPECT_EQ(markup.text, "<speak>M\xC3\xBCller <emphasis level=\"strong\">&amp;</emphasis> "
                           "&lt;S\xC3\xB6hne&gt;.</speak>");
    EXPECT_EQ(markup.offsets, (std::vector<std::size_t>{7, 39, 56}));
    EXPECT_TRUE(markup.isXml);
}

TEST(MarkedMarkup, MarksEachWord)
{
    const Phrase phrase{.words = {{L"in"}, {L"\"it\""}}, .prosody = {}};
    EXPECT_EQ(MarkedMarkup(phrase, "7:").text,
              "<speak><mark name=\"7:0\"/>in <mark name=\"7:1\"/>&quot;it&quot;</speak>");
}

} // namespace
} // namespace voxtrel::agent::voices
