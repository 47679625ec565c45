#pragma once

#include "agent/control.h"
#include "settings/string_table.h"
#include "speech/character_settings.h"
#include "speech/pronunciation_list.h"

#include <string_view>

namespace voxtrel::speech {

// The one current character: which it is, its size, its voice, and the texts that try them out. What the
// options' lists and buttons do, without the lists and buttons.
class CharacterControl {
public:
    CharacterControl(agent::Control& control, const CharacterSurroundings& surroundings,
                     const settings::StringTable& texts)
        : control_(control), to_(surroundings), texts_(texts), pronunciations_(surroundings.store)
    {
    }

    // Loads the character of this name and makes it the current one; there must be none yet.
    agent::Result LoadCharacter(std::wstring_view name);

    // What the appearance lists show when a character is chosen.
    struct Appearance {
        int sizeIndex = 0;
        std::wstring_view balloonFont;
        std::wstring_view balloonFontSize; // as a text, points
    };

    // Puts the character of this name in the place of the current one. When it cannot be loaded the old one
    // comes back and nothing else changes.
    agent::Result ChangeCharacter(std::wstring_view name, const Appearance& appearance);

    // Also plays the two attention animations.
    void ChangeSize(int sizeIndex);

    // The name becomes the chosen voice even if its engine cannot be used.
    agent::Result ChangeVoice(std::wstring_view name);

    // 0 normal, 1 whisper, 2 monotone; saved at once. Any other index changes nothing.
    void ChangeVoiceStyle(int index);

    // Each silences the character and queues a text.
    void TestVoice();
    void TestAppearance();
    void TestLargeBalloon();

private:
    void SpeakTestText(int number);

    agent::Control& control_;
    CharacterSurroundings to_;
    const settings::StringTable& texts_;
    PronunciationList pronunciations_;
};

// The tag of a voice style: 0 normal, 1 whisper, 2 monotone; empty for any other.
std::wstring_view VoiceStyleTag(int index);

} // namespace voxtrel::speech
