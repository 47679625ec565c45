// The sounds of a character file are as little to be trusted as the rest of it: whatever they hold, reading
// them gives at most a minute of samples.

#include "agent/speech/synthesizer.h"
#include "agent/speech/wav_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (voxtrel::agent::speech::ReadWav({data, size}).size() > 61U * voxtrel::agent::speech::kSampleRate)
        std::abort();
    return 0;
}
