#include "app/voice_choice.h"

#include "settings/memory_backend.h"
#include "settings/setting_keys.h"

#include <gtest/gtest.h>

namespace voxtrel::app {
namespace {

const std::vector<ListedVoice> kVoices{
    {L"German, Quick", L"Quick", L"de", L"{1}"},
    {L"German (Austria), Quick", L"Quick", L"de-AT", L"{2}"},
    {L"Chinese (Mandarin, as Pinyin), Quick", L"Quick", L"cmn", L"{3}"},
    {L"German, Slow", L"Slow", L"de", L"{4}"},
    {L"Klara, Slow", L"Slow", L"de", L"{5}"},
};

std::wstring IdsOf(const std::vector<ListedVoice>& voices)
{
    std::wstring ids;
    for (const ListedVoice& voice : voices)
        ids += voice.modeId;
    return ids;
}

struct MeantCase {
    const wchar_t* words;
    const wchar_t* ids;
};

constexpr MeantCase kMeantCases[] = {
    {L"German, Slow", L"{4}"},
    {L"german", L"{1}"},
    {L"Klara", L"{5}"},
    {L"de", L"{1}"},
    {L"de-at", L"{2}"},
    {L"{3}", L"{3}"},
    {L"slow", L"{4}{5}"},
    {L"ALL", L"{1}{2}{3}{4}{5}"},
    {L"Germ", L""},
    {L"", L""},
    {L"Chinese (Mandarin, as Pinyin)", L"{3}"},
};

TEST(VoicesMeantBy, FindsVoicesByWhatPeopleCallThem)
{
    for (const auto& [words, ids] : kMeantCases) {
        SCOPED_TRACE(words);
        EXPECT_EQ(IdsOf(VoicesMeantBy(words, kVoices)), ids);
    }
}

struct AnswerCase {
    const wchar_t* answer;
    const wchar_t* ids; // null: refused
    const wchar_t* problem;
};

constexpr AnswerCase kAnswerCases[] = {
    {L"2", L"{2}", L""},
    {L" 1, 3-4 ", L"{1}{3}{4}", L""},
    {L"1,1,german", L"{1}", L""},
    {L"Chinese (Mandarin, as Pinyin)", L"{3}", L""},
    {L"all", L"{1}{2}{3}{4}{5}", L""},
    {L"", L"", L""},
    {L"0", nullptr, L"0"},
    {L"6", nullptr, L"6"},
    {L"4-3", nullptr, L"4-3"},
    {L"1, nobody", nullptr, L"nobody"},
};

TEST(ChooseVoices, UnderstandsNumbersRangesAndNames)
{
    for (const auto& [answer, ids, expectedProblem] : kAnswerCases) {
        SCOPED_TRACE(answer);
        std::vector<ListedVoice> chosen;
        std::wstring problem;
        EXPECT_EQ(ChooseVoices(answer, kVoices, chosen, problem), ids != nullptr);
        if (ids) {
            EXPECT_EQ(IdsOf(chosen), ids);
        }
        EXPECT_EQ(problem, expectedProblem);
    }
}

class VoiceSection : public testing::Test {
protected:
    VoiceSection() { store.SetApplicationName(settings::kApplicationName); }

    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
};

TEST_F(VoiceSection, OffersWhatItDoesNotHoldUnderWhateverName)
{
    store.SaveSetting(settings::kVoicesSection, L"My own", L"{2}");
    EXPECT_EQ(IdsOf(VoicesToAdd(store, kVoices)), L"{1}{3}{4}{5}");
}

TEST_F(VoiceSection, KeepsTheUsersEntryOfTheSameName)
{
    store.SaveSetting(settings::kVoicesSection, L"German, Quick", L"{mine}");
    EXPECT_FALSE(AddVoice(store, kVoices[0]));
    EXPECT_EQ(store.GetSetting(settings::kVoicesSection, L"German, Quick"), L"{mine}");
    EXPECT_TRUE(AddVoice(store, kVoices[1]));
    EXPECT_TRUE(AddVoice(store, kVoices[1]));
    EXPECT_EQ(store.GetSetting(settings::kVoicesSection, L"German (Austria), Quick"), L"{2}");
}

TEST(VoiceTableText, StandsInColumns)
{
    EXPECT_EQ(VoiceTableText({kVoices[0], kVoices[1]}), L"German, Quick            Quick  de     {1}\n"
                                                        L"German (Austria), Quick  Quick  de-AT  {2}\n");
}

} // namespace
} // namespace voxtrel::app
