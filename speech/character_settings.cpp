#include "speech/character_settings.h"

#include "agent/control.h"
#include "settings/number_conversions.h"
#include "settings/setting_keys.h"

namespace voxtrel::speech {

using agent::Ignore;
using settings::FormatBoolean;
using settings::FormatNumber;
using settings::SettingKey;
using settings::SettingsStore;
using settings::SharedSettings;
using settings::ToBoolean;
using settings::ToInt16;
using settings::ToInt32;

namespace keys = settings::keys;

namespace {

constexpr long kOutsideTheScreen = -200;
constexpr long kBeyondTheEdge = 10;

std::wstring Read(const SettingsStore& store, const SettingKey& key)
{
    return store.GetSetting(key.section, key.name, key.fallback);
}

void Write(SettingsStore& store, const SettingKey& key, std::wstring_view value)
{
    store.SaveSetting(key.section, key.name, value);
}

void SwitchScreenReading(const CharacterSurroundings& to)
{
    if (to.shared.usescreenreading) {
        to.access.StartServer(to.folder.AccServer());
        to.access.StartMonitoring();
    } else {
        to.access.StopMonitoring();
    }
}

void PlaceCharacter(const SettingsStore& store, agent::Character& character)
{
    Ignore(character.GetBalloon().SetFontName(Read(store, keys::kFont)));
    Ignore(character.GetBalloon().SetFontSize(ToInt32(Read(store, keys::kFontSize))));
    Ignore(character.SetTop(ToInt32(Read(store, keys::kTop))));
    Ignore(character.SetLeft(ToInt32(Read(store, keys::kLeft))));
}

void ParkCharacter(const CharacterSurroundings& to, agent::Character& character)
{
    const auto place = ParkingPositionOf(to.shared.Agent_Position_List_Index, character, to.desktop);
    if (!place)
        return;
    Ignore(character.SetTop(place->top));
    Ignore(character.SetLeft(place->left));
}

// The voice that the settings name; the first one when the table of voices does not know it.
void ChooseVoice(const CharacterSurroundings& to, agent::Character& character)
{
    const std::wstring mode =
        to.store.GetSetting(settings::kVoicesSection, to.shared.AgentVoice, settings::kDefaultVoiceMode);
    const agent::Result chosen = character.SetTTSModeID(mode);
    if (!chosen.Ok() && !chosen.description.empty())
        to.messages.ShowExclamation(chosen.description);
}

void SetBalloonStyle(const SharedSettings& shared, agent::Balloon& balloon)
{
    namespace bits = agent::balloon_style;
    std::uint32_t style = balloon.Style() & ~(bits::kAutoHide | bits::kAutoPace | bits::kSizeToText);
    style |= shared.autohide ? bits::kAutoHide : 0;
    style |= shared.autopace ? bits::kAutoPace : 0;
    style |= shared.autosize ? bits::kSizeToText : 0;
    Ignore(balloon.SetStyle(style));
}

} // namespace

void LoadSettings(const CharacterSurroundings& surroundings)
{
    const SettingsStore& store = surroundings.store;
    SharedSettings& shared = surroundings.shared;
    agent::Character* const character = shared.character;

    if (character != nullptr)
        Ignore(character->SetSoundEffectsOn(false));
    shared.SAPITags = Read(store, keys::kSAPITags);
    shared.interwordpause = ToInt16(Read(store, keys::kInterwordPause));
    shared.usescreenreading = ToBoolean(Read(store, keys::kUseScreenReading));
    SwitchScreenReading(surroundings);

    if (character != nullptr)
        PlaceCharacter(store, *character);
    shared.Pitch = ToInt16(Read(store, keys::kPitch));
    shared.Speed = ToInt16(Read(store, keys::kSpeed));
    shared.Volume = ToInt32(Read(store, keys::kVolume));
    shared.Agent_Position_List_Index = settings::Val(Read(store, keys::kPositionListIndex));
    shared.Agent_Size_IDX = ToInt16(Read(store, keys::kSizeIndex));
    if (character != nullptr) {
        Ignore(character->SetHeight(CharacterPixels(shared.Agent_Size_IDX)));
        Ignore(character->SetWidth(CharacterPixels(shared.Agent_Size_IDX)));
    }
    shared.Agent_Hidden = Read(store, keys::kHidden);
    if (character != nullptr && shared.Agent_Hidden == L"1")
        ParkCharacter(surroundings, *character);

    shared.Agent_User_Tags = Read(store, keys::kUserTags);
    shared.Agent_Balloon_Para = Read(store, keys::kBalloonPara);
    shared.Agent_Balloon_Always = ToInt16(Read(store, keys::kBalloonAlways));
    shared.FavouriteAgent = Read(store, keys::kFavouriteAgent);
    shared.UseVoxtrel = ToBoolean(Read(store, keys::kUseVoxtrel));
    shared.autohide = ToBoolean(Read(store, keys::kAutohide));
    shared.autopace = ToBoolean(Read(store, keys::kAutopace));
    shared.autosize = ToBoolean(Read(store, keys::kAutosize));

    shared.AgentVoice = Read(store, keys::kAgentVoice);
    if (character != nullptr) {
        ChooseVoice(surroundings, *character);
        SetBalloonStyle(shared, character->GetBalloon());
    }
    shared.VoiceType = Read(store, keys::kVoiceType);
}

void SaveSettings(SettingsStore& store, const SharedSettings& shared)
{
    const settings::SettingsChanges together(store);
    agent::Character* const character = shared.character;

    Write(store, keys::kPositionListIndex, FormatNumber(shared.Agent_Position_List_Index));
    Write(store, keys::kSAPITags, shared.SAPITags);
    Write(store, keys::kInterwordPause, FormatNumber(shared.interwordpause));
    Write(store, keys::kUseScreenReading, FormatBoolean(shared.usescreenreading));
    if (character != nullptr)
        SavePosition(store, *character);
    Write(store, keys::kAutohide, FormatBoolean(shared.autohide));
    Write(store, keys::kAutopace, FormatBoolean(shared.autopace));
    Write(store, keys::kAutosize, FormatBoolean(shared.autosize));
    Write(store, keys::kAgentVoice, shared.AgentVoice);

    Write(store, keys::kSizeIndex, FormatNumber(shared.Agent_Size_IDX));
    if (character != nullptr) {
        Write(store, keys::kFont, character->GetBalloon().FontName());
        Write(store, keys::kFontSize, FormatNumber(character->GetBalloon().FontSize()));
    }
    Write(store, keys::kFavouriteAgent, shared.FavouriteAgent);
    Write(store, keys::kBalloonPara, shared.Agent_Balloon_Para);
    Write(store, keys::kBalloonAlways, FormatNumber(shared.Agent_Balloon_Always));
    Write(store, keys::kHidden, shared.Agent_Hidden);
    Write(store, keys::kUserTags, shared.Agent_User_Tags);
    Write(store, keys::kPitch, FormatNumber(shared.Pitch));
    store.SaveSetting(keys::kSpeed.section, keys::kSpeedAsWritten, FormatNumber(shared.Speed));
    store.SaveSetting(keys::kVolume.section, keys::kVolumeAsWritten, FormatNumber(shared.Volume));
}

void SavePosition(SettingsStore& store, const agent::Character& character)
{
    const settings::SettingsChanges together(store);
    Write(store, keys::kTop, FormatNumber(character.Top()));
    Write(store, keys::kLeft, FormatNumber(character.Left()));
}

long CharacterPixels(int sizeIndex)
{
    switch (sizeIndex) {
    case 1:
        return 85;
    case 2:
        return 50;
    default:
        return 128;
    }
}

std::optional<ParkingPosition> ParkingPositionOf(double index, const agent::Character& character,
                                                 const platform::Desktop& desktop)
{
    if (index == 0)
        return ParkingPosition{-character.ShownHeight(), -character.ShownWidth()};
    if (index == 1)
        return ParkingPosition{kOutsideTheScreen, desktop.ScreenWidth() + kBeyondTheEdge};
    if (index == 2)
        return ParkingPosition{desktop.ScreenHeight() + kBeyondTheEdge, kOutsideTheScreen};
    if (index == 3)
        return ParkingPosition{desktop.ScreenHeight() + kBeyondTheEdge,
                               desktop.ScreenWidth() + kBeyondTheEdge};
    return std::nullopt;
}

} // namespace voxtrel::speech
