#pragma once

#include "agent/speech/voice_engine.h"

namespace voxtrel::agent::voices {

// The first digits of the mode identifiers of each engine. They are stored in users' settings: never change
// one.
inline constexpr std::uint32_t kEspeakCode = 0xE59EA4B1;
inline constexpr std::uint32_t kDispatcherCode = 0x5D15BA7C;
inline constexpr std::uint32_t kSapiCode = 0x5A91B005;
inline constexpr std::uint32_t kOneCoreCode = 0x0EC08E01;

// The engines that this system can have; whether they are installed is found out when their voices are asked
// for. Loads and asks nothing.
std::vector<speech::VoiceFamily> SystemVoiceFamilies();

} // namespace voxtrel::agent::voices
