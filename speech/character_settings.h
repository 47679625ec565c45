#pragma once

#include "platform/accessibility.h"
#include "platform/desktop.h"
#include "platform/messages.h"
#include "settings/program_folder.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"

#include <optional>

namespace voxtrel::speech {

// What loading the settings touches beside the record itself. Everything outlives whoever holds this.
struct CharacterSurroundings {
    settings::SettingsStore& store;
    settings::SharedSettings& shared;
    const platform::Desktop& desktop;
    platform::OVAccessibility& access;
    platform::Messages& messages;
    const settings::ProgramFolder& folder;
};

// Reads every setting into the shared record and applies those of the character to the loaded one. No step
// that fails stops the others; a voice that this machine does not have is told in a message box.
void LoadSettings(const CharacterSurroundings& surroundings);

// Writes the settings back; the position, and the balloon's font, are those of the character at this moment.
// The voice style and UseVoxtrel are not written here.
void SaveSettings(settings::SettingsStore& store, const settings::SharedSettings& shared);

// Writes where the character stands, and nothing else.
void SavePosition(settings::SettingsStore& store, const agent::Character& character);

// Height and width of the character in pixels, by the size index: 85 for 1, 50 for 2, 128 for any other.
long CharacterPixels(int sizeIndex);

// Where a hidden character is kept, just outside the screen, in pixels; nothing for an index that is none of
// 0 to 3.
struct ParkingPosition {
    long top = 0;
    long left = 0;
};
std::optional<ParkingPosition> ParkingPositionOf(double index, const agent::Character& character,
                                                 const platform::Desktop& desktop);

} // namespace voxtrel::speech
