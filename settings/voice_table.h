#pragma once

#include "settings/settings_store.h"

namespace voxtrel::settings {

// Writes the eight voices of a first run, display name to engine mode identifier, when section "voices" holds
// nothing. A section that holds anything is the user's and stays as it is.
void SeedVoiceTable(SettingsStore& store);

} // namespace voxtrel::settings
