#pragma once

#include <cstdint>
#include <string>

namespace voxtrel::agent {
class Character;
}

namespace voxtrel::settings {

// The one record of the speech, character, balloon and voice settings, read and written by every window.
// Lives as long as the program; filled by LoadSettings once the character is loaded.
struct SharedSettings {
    std::wstring SAPITags; // put in front of all speech; set only through the store
    bool autosize = false;
    bool autohide = false;
    bool autopace = false;
    std::wstring AgentVoice;         // display name; key into section "voices"
    std::int16_t interwordpause = 0; // milliseconds; 0 for none
    bool usescreenreading = false;
    std::wstring VoiceType; // a whole \chr= tag, or empty for the normal voice
    std::int16_t Pitch = 0;
    std::int16_t Speed = 0;
    std::int32_t Volume = 0;
    bool UseVoxtrel = false;
    agent::Character* character = nullptr; // owned by the control it was loaded into
    std::wstring FavouriteAgent;           // file name of the character, without extension
    std::wstring Agent_Hidden;             // "1" when the character is kept off screen
    std::wstring Agent_Balloon_Para;
    std::int16_t Agent_Balloon_Always = 0; // balloon mode of the speech markup: 0, 1 or 2
    std::wstring Agent_User_Tags;
    std::int16_t Agent_Size_IDX = 0;      // 0 large, 1 medium, 2 small
    double Agent_Position_List_Index = 0; // where a hidden character is parked: 0 to 3

    std::wstring PendingSpeech; // speech markup waiting for the next tick of hotkeytimer
    bool TextReaderOpen = false;
    bool OptionsOpen = false;
};

} // namespace voxtrel::settings
