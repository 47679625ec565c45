#include "agent/voices/linux/dispatcher_player.h"
#include "agent/voices/linux/espeak_engine.h"
#include "agent/voices/system_voices.h"

namespace voxtrel::agent::voices {

std::vector<speech::VoiceFamily> SystemVoiceFamilies() { return {EspeakFamily(), DispatcherFamily()}; }

} // namespace voxtrel::agent::voices
