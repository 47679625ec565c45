#include "speech/character_control.h"

#include "settings/number_conversions.h"
#include "settings/setting_keys.h"
#include "settings/string_numbers.h"
#include "speech/speech_markup.h"

namespace voxtrel::speech {

using agent::Ignore;

agent::Result CharacterControl::LoadCharacter(std::wstring_view name)
{
    agent::Result loaded = control_.Load(name, to_.folder.CharacterFile(name));
    if (loaded.Ok())
        to_.shared.character = control_.Find(name);
    return loaded;
}

agent::Result CharacterControl::ChangeCharacter(std::wstring_view name, const Appearance& appearance)
{
    settings::SharedSettings& shared = to_.shared;
    if (shared.character != nullptr)
        Ignore(shared.character->Hide());
    shared.character = nullptr;
    Ignore(control_.Unload(shared.FavouriteAgent));

    agent::Result loaded = LoadCharacter(name);
    if (!loaded.Ok()) {
        Ignore(LoadCharacter(shared.FavouriteAgent));
        LoadSettings(to_);
    } else {
        shared.FavouriteAgent = name;
        Ignore(shared.character->SetHeight(CharacterPixels(appearance.sizeIndex)));
        Ignore(shared.character->SetWidth(CharacterPixels(appearance.sizeIndex)));
        agent::Balloon& balloon = shared.character->GetBalloon();
        Ignore(balloon.SetFontName(appearance.balloonFont));
        Ignore(balloon.SetFontSize(settings::ToInt32(appearance.balloonFontSize)));
        SaveSettings(to_.store, shared);
        LoadSettings(to_);
    }
    if (shared.character != nullptr)
        Ignore(shared.character->Show());
    return loaded;
}

void CharacterControl::ChangeSize(int sizeIndex)
{
    to_.shared.Agent_Size_IDX = static_cast<std::int16_t>(sizeIndex);
    agent::Character* const character = to_.shared.character;
    if (character == nullptr)
        return;
    Ignore(character->SetHeight(CharacterPixels(sizeIndex)));
    Ignore(character->SetWidth(CharacterPixels(sizeIndex)));
    Ignore(character->Play(L"getattention"));
    Ignore(character->Play(L"getattentionreturn"));
    Ignore(character->Show());
}

agent::Result CharacterControl::ChangeVoice(std::wstring_view name)
{
    to_.shared.AgentVoice = name;
    if (to_.shared.character == nullptr)
        return agent::Result::Success();
    return to_.shared.character->SetTTSModeID(to_.store.GetSetting(settings::kVoicesSection, name));
}

void CharacterControl::ChangeVoiceStyle(int index)
{
    const std::wstring_view tag = VoiceStyleTag(index);
    if (tag.empty())
        return;
    to_.shared.VoiceType = tag;
    to_.store.SaveSetting(settings::keys::kVoiceType.section, settings::keys::kVoiceType.name, tag);
}

void CharacterControl::TestVoice() { SpeakTestText(settings::strings::kTestVoice); }

void CharacterControl::TestAppearance() { SpeakTestText(settings::strings::kTestAppearance); }

void CharacterControl::TestLargeBalloon() { SpeakTestText(settings::strings::kTestLargeBalloon); }

void CharacterControl::SpeakTestText(int number)
{
    if (to_.shared.character != nullptr)
        Ignore(to_.shared.character->StopAll());
    std::wstring text = texts_.Text(number);
    BuildSpeechText(text, to_.shared, pronunciations_);
}

std::wstring_view VoiceStyleTag(int index)
{
    switch (index) {
    case 0:
        return L"\\chr=\"Normal\"\\";
    case 1:
        return L"\\chr=\"Whisper\"\\";
    case 2:
        return L"\\chr=\"Monotone\"\\";
    default:
        return {};
    }
}

} // namespace voxtrel::speech
