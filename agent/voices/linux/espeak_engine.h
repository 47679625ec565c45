#pragma once

#include "agent/speech/voice_engine.h"

namespace voxtrel::agent::voices {

// eSpeak NG through its library: one voice for each language it knows.
speech::VoiceFamily EspeakFamily();

} // namespace voxtrel::agent::voices
