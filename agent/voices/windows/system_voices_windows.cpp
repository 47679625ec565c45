#include "agent/voices/sapi_engine.h"
#include "agent/voices/system_voices.h"

namespace voxtrel::agent::voices {

std::vector<speech::VoiceFamily> SystemVoiceFamilies() { return {SapiFamily(), OneCoreFamily()}; }

} // namespace voxtrel::agent::voices
