#include "agent/voices/system_voices.h"

namespace voxtrel::agent::voices {

std::vector<speech::VoiceFamily> SystemVoiceFamilies() { return {}; }

} // namespace voxtrel::agent::voices
