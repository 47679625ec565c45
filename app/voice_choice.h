#pragma once

#include "settings/settings_store.h"

#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::app {

// A voice that can be spoken with, as the lists of the command line show it.
struct ListedVoice {
    std::wstring name;     // display name
    std::wstring engine;   // "eSpeak NG"; empty when it is not known any more
    std::wstring language; // a language tag; may be empty
    std::wstring modeId;   // engine mode identifier

    friend bool operator==(const ListedVoice&, const ListedVoice&) = default;
};

// The voices that somebody may mean: by display name, display name without its engine, engine, language tag,
// engine mode identifier, or "all"; case does not count. Of engines that have the same voice or language the
// first one is meant.
std::vector<ListedVoice> VoicesMeantBy(std::wstring_view words, const std::vector<ListedVoice>& voices);

// Which of the voices an answer such as "3, 7-9, German" chooses. False when a part of it means none of them;
// it is then left in problem.
bool ChooseVoices(std::wstring_view answer, const std::vector<ListedVoice>& voices,
                  std::vector<ListedVoice>& chosen, std::wstring& problem);

// The voices whose identifier section "voices" does not hold yet.
std::vector<ListedVoice> VoicesToAdd(const settings::SettingsStore& store,
                                     const std::vector<ListedVoice>& voices);

// Puts a voice into section "voices" under its display name. False when the user has given that name to
// another voice: it stays as it is.
bool AddVoice(settings::SettingsStore& store, const ListedVoice& voice);

// The table of --list-voices: name, engine, language and identifier, in columns.
std::wstring VoiceTableText(const std::vector<ListedVoice>& voices);

} // namespace voxtrel::app
