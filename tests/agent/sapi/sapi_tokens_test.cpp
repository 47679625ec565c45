// Voices in the registry as SAPI itself lists them.

#include "agent/sapi/registered_voice.h"
#include "agent/voices/sapi_engine.h"
#include "agent/voices/system_voices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace voxtrel::agent::voices {
namespace {

using speech::SystemVoice;
using tests::RegisteredVoice;

const SystemVoice* FindByKey(const std::vector<SystemVoice>& voices, const std::wstring& key)
{
    const auto found = std::find_if(voices.begin(), voices.end(),
                                    [&](const SystemVoice& voice) { return voice.key == key; });
    return found == voices.end() ? nullptr : &*found;
}

TEST(SapiVoices, AreListedWithTheirFamilyLanguageAndSex)
{
    RegisteredVoice hedda(HKEY_LOCAL_MACHINE, L"Speech", L"VoxtrelTestHedda");
    hedda.Describe(L"Hedda - German", L"407;7", L"Female");
    const std::vector<SystemVoice> voices = SapiFamily().list();
    const SystemVoice* const voice = FindByKey(voices, hedda.Id());
    ASSERT_TRUE(voice);
    EXPECT_EQ(voice->displayName, L"Hedda - German, SAPI 5");
    EXPECT_EQ(voice->engine, L"SAPI 5");
    EXPECT_EQ(voice->language, L"de-DE");
    EXPECT_TRUE(voice->female);
    EXPECT_EQ(speech::FamilyCodeOf(voice->modeId), kSapiCode);
}

TEST(SapiVoices, AreTheSameAtEachStart)
{
    RegisteredVoice voice(HKEY_LOCAL_MACHINE, L"Speech", L"VoxtrelTestStable");
    voice.Describe(L"Stable", L"409", L"Male");
    const auto first = SapiFamily().list();
    voice.Describe(L"Stable, renamed", L"409", L"Male");
    const auto second = SapiFamily().list();
    ASSERT_TRUE(FindByKey(first, voice.Id()) && FindByKey(second, voice.Id()));
    EXPECT_EQ(FindByKey(first, voice.Id())->modeId, FindByKey(second, voice.Id())->modeId);
}

TEST(SapiVoices, OfTheUserAreListedToo)
{
    RegisteredVoice own(HKEY_CURRENT_USER, L"Speech", L"VoxtrelTestOwn");
    own.Describe(L"Own", L"40C", L"Male");
    const auto voices = SapiFamily().list();
    const SystemVoice* const voice = FindByKey(voices, own.Id());
    ASSERT_TRUE(voice);
    EXPECT_EQ(voice->language, L"fr-FR");
    EXPECT_FALSE(voice->female);
}

TEST(SapiVoices, OfBothFamiliesAreKeptApart)
{
    RegisteredVoice sapi(HKEY_LOCAL_MACHINE, L"Speech", L"VoxtrelTestTwin");
    RegisteredVoice oneCore(HKEY_LOCAL_MACHINE, L"Speech_OneCore", L"VoxtrelTestTwin");
    sapi.Describe(L"Twin", L"409", L"Male");
    oneCore.Describe(L"Twin", L"409", L"Male");
    const auto sapiVoices = SapiFamily().list();
    const auto oneCoreVoices = OneCoreFamily().list();
    EXPECT_FALSE(FindByKey(sapiVoices, oneCore.Id()));
    EXPECT_FALSE(FindByKey(oneCoreVoices, sapi.Id()));
    ASSERT_TRUE(FindByKey(sapiVoices, sapi.Id()) && FindByKey(oneCoreVoices, oneCore.Id()));
    EXPECT_EQ(FindByKey(oneCoreVoices, oneCore.Id())->displayName, L"Twin, OneCore");
    EXPECT_EQ(speech::FamilyCodeOf(FindByKey(oneCoreVoices, oneCore.Id())->modeId), kOneCoreCode);
}

TEST(SapiVoices, WithoutAnyDescriptionAreCalledByTheirKeys)
{
    const RegisteredVoice bare(HKEY_LOCAL_MACHINE, L"Speech", L"VoxtrelTestBare");
    const auto voices = SapiFamily().list();
    const SystemVoice* const voice = FindByKey(voices, bare.Id());
    ASSERT_TRUE(voice);
    EXPECT_EQ(voice->displayName, L"VoxtrelTestBare, SAPI 5");
    EXPECT_EQ(voice->language, L"");
}

TEST(SapiVoices, BothFamiliesAreOffered)
{
    std::vector<std::wstring> names;
    for (const speech::VoiceFamily& family : SystemVoiceFamilies())
        names.push_back(family.name);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"SAPI 5", L"OneCore"}));
}

} // namespace
} // namespace voxtrel::agent::voices
