#include "agent/speech/voice_engine.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::speech {
namespace {

TEST(VoiceModeId, IsTheSameForever)
{
    // Stored in settings: an identifier that changes is a voice that is lost.
    EXPECT_EQ(VoiceModeId(0xE59EA4B1, L"de"), L"{E59EA4B1-D2C6-8438-9EBE-7F74041E47A0}");
    EXPECT_EQ(VoiceModeId(0x5D15BA7C, L"espeak-ng:German"), L"{5D15BA7C-446E-8A70-B511-4E2D02E8824D}");
}

TEST(VoiceModeId, TellsVoicesAndFamiliesApart)
{
    EXPECT_NE(VoiceModeId(1, L"de"), VoiceModeId(1, L"de-at"));
    EXPECT_NE(VoiceModeId(1, L"de").substr(10), VoiceModeId(2, L"de").substr(10));
    EXPECT_NE(VoiceModeId(1, L""), VoiceModeId(1, L"M\u0101ori"));
}

TEST(FamilyCodeOf, FindsTheFamilyInAnyCase)
{
    EXPECT_EQ(FamilyCodeOf(VoiceModeId(0xE59EA4B1, L"de")), 0xE59EA4B1U);
    EXPECT_EQ(FamilyCodeOf(L"{e59ea4b1-d2c6-8438-9ebe-7f74041e47a0}"), 0xE59EA4B1U);
    for (const wchar_t* none :
         {L"", L"{}", L"nonsense", L"{E59EA4B1}", L"{G59EA4B1-D2C6-8438-9EBE-7F74041E47A0}",
          L"(E59EA4B1-D2C6-8438-9EBE-7F74041E47A0)"})
        EXPECT_EQ(FamilyCodeOf(none), 0U) << none;
}

TEST(WordAtOffset, FindsTheWordOfEachCharacter)
{
    const Phrase phrase{.words = {{L"in"}, {L"the"}, {L"end."}}, .prosody = {}};
    EXPECT_EQ(PhraseText(phrase), L"in the end.");
    const auto offsets = WordOffsets(phrase);
    EXPECT_EQ(offsets, (std::vector<std::size_t>{0, 3, 7}));
    EXPECT_EQ(WordAtOffset(offsets, 0), 0U);
    EXPECT_EQ(WordAtOffset(offsets, 2), 0U);
    EXPECT_EQ(WordAtOffset(offsets, 3), 1U);
    EXPECT_EQ(WordAtOffset(offsets, 7), 2U);
    EXPECT_EQ(WordAtOffset(offsets, 99), 2U);
}

} // namespace
} // namespace voxtrel::agent::speech
