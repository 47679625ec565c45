#pragma once

#include "agent/speech/voice_engine.h"

// The voices of Windows. Both families are spoken with in the same way; they only stand in different places.
namespace voxtrel::agent::voices {

speech::VoiceFamily SapiFamily();
speech::VoiceFamily OneCoreFamily();

} // namespace voxtrel::agent::voices
