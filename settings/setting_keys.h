#pragma once

#include <string_view>

namespace voxtrel::settings {

// Under which the program keeps its settings.
inline constexpr std::wstring_view kApplicationName = L"Orvella";

inline constexpr std::wstring_view kVoicesSection = L"voices";
inline constexpr std::wstring_view kPronunciationSection = L"modify";
inline constexpr std::wstring_view kDefaultVoiceMode = L"{CA141FD0-AC7F-11D1-97A3-006008273000}";

// A stored value: where it is read and what is read when it is missing.
struct SettingKey {
    std::wstring_view section;
    std::wstring_view name;
    std::wstring_view fallback;
};

// The spellings are part of the stored format: other programs and operators know the values by them, and
// "Agent" and "agent" are one section.
namespace keys {
inline constexpr SettingKey kSAPITags{L"Agent", L"SAPITags", L""};
inline constexpr SettingKey kInterwordPause{L"speech", L"interwordpause", L"0"};
inline constexpr SettingKey kUseScreenReading{L"speech", L"usescreenreading", L"False"};
inline constexpr SettingKey kFont{L"Agent", L"Font", L"Arial"};
inline constexpr SettingKey kFontSize{L"Agent", L"FontSize", L"14"};
inline constexpr SettingKey kTop{L"Agent", L"Top", L"100"};
inline constexpr SettingKey kLeft{L"Agent", L"Left", L"100"};
inline constexpr SettingKey kPitch{L"Agent", L"Pitch", L"150"};
inline constexpr SettingKey kSpeed{L"Agent", L"speed", L"150"};
inline constexpr SettingKey kVolume{L"Agent", L"volume", L"30000"};
inline constexpr SettingKey kPositionListIndex{L"Agent", L"Agent_Position_List_Index", L"1"};
inline constexpr SettingKey kSizeIndex{L"Agent", L"Agent_Size_IDX", L"0"};
inline constexpr SettingKey kHidden{L"Agent", L"Agent_Hidden", L"0"};
inline constexpr SettingKey kUserTags{L"Agent", L"Agent_User_Tags", L""};
inline constexpr SettingKey kBalloonPara{L"Agent", L"Agent_Balloon_Para", L"0"};
inline constexpr SettingKey kBalloonAlways{L"Agent", L"Agent_Balloon_Always", L"1"};
inline constexpr SettingKey kFavouriteAgent{L"Agent", L"FavouriteAgent", L"genie"};
inline constexpr SettingKey kUseVoxtrel{L"Speech", L"UseVoxtrel", L"False"};
inline constexpr SettingKey kAutohide{L"agent", L"autohide", L"True"};
inline constexpr SettingKey kAutopace{L"agent", L"autopace", L"True"};
inline constexpr SettingKey kAutosize{L"agent", L"autosize", L"False"};
inline constexpr SettingKey kAgentVoice{L"agent", L"AgentVoice", L"Adult Male 1, US English"};
inline constexpr SettingKey kVoiceType{L"Agent", L"VoiceType", L""};

// Written with capitals, read without.
inline constexpr std::wstring_view kSpeedAsWritten = L"Speed";
inline constexpr std::wstring_view kVolumeAsWritten = L"Volume";
} // namespace keys

} // namespace voxtrel::settings
