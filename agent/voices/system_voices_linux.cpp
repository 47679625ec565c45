#include "agent/voices/dispatcher_player.h"
#include "agent/voices/espeak_engine.h"
#include "agent/voices/system_voices.h"

namespace voxtrel::agent::voices {

std::vector<speech::VoiceFamily> SystemVoiceFamilies() { return {EspeakFamily(), DispatcherFamily()}; }

} // namespace voxtrel::agent::voices
