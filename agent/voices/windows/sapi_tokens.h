#pragma once

#include "agent/speech/voice_engine.h"

namespace voxtrel::agent::voices {

// Where the voices of a family are registered, and what it is called.
struct SapiShelf {
    std::uint32_t code;
    std::wstring_view name;
    std::wstring_view folder; // below SOFTWARE, of the machine and of the user
};

// The voices that are registered there now. For worker threads.
std::vector<speech::SystemVoice> ListSapiVoices(const SapiShelf& shelf);

} // namespace voxtrel::agent::voices
