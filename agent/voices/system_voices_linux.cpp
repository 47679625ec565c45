#include "agent/voices/espeak_engine.h"
#include "agent/voices/system_voices.h"

namespace voxtrel::agent::voices {

std::vector<speech::VoiceFamily> SystemVoiceFamilies() { return {EspeakFamily()}; }

} // namespace voxtrel::agent::voices
