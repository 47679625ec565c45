#pragma once

#include "agent/speech/audio_output.h"

#include <memory>

namespace voxtrel::agent::speech {

// The sound device of this machine. source must outlive the output.
std::unique_ptr<AudioOutput> MakePortAudioOutput(SampleSource& source);

} // namespace voxtrel::agent::speech
