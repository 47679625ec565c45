#pragma once

#include "agent/speech/audio_output.h"

#include <functional>
#include <memory>

namespace voxtrel::agent::speech {

// The sound device of this machine. source must outlive the output. quietly runs the search for devices; it
// may be empty.
std::unique_ptr<AudioOutput> MakePortAudioOutput(SampleSource& source,
                                                 std::function<void(const std::function<void()>&)> quietly);

} // namespace voxtrel::agent::speech
