#pragma once

#include "agent/speech/voice_engine.h"

namespace voxtrel::agent::voices {

// Speech Dispatcher, the speech service of the desktop, with the voices of all its output modules. It plays
// what it says by itself.
speech::VoiceFamily DispatcherFamily();

} // namespace voxtrel::agent::voices
