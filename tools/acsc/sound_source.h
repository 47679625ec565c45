#pragma once

#include "tools/acsc/statement.h"

#include <cstdint>
#include <string>
#include <vector>

// Small sounds that an author writes down as notes instead of recording them.
namespace voxtrel::acsc {

enum class Timbre {
    Soft,  // a flute: one smooth tone
    Reed,  // a horn: rich, with a slight tremble
    Bell,  // struck metal, rings on
    Wood,  // struck wood, short
    Noise, // breath or rustle about the pitch
};

struct Tone {
    Timbre timbre = Timbre::Soft;
    double from = 440; // hertz at the start
    double to = 440;   // and at the end
    int start = 0;     // hundredths of a second from the start of the sound
    int length = 20;   // likewise
    double volume = 0.5;
};

struct SoundSource {
    std::string name;
    std::vector<Tone> tones; // at least one
};

// Reads "sound NAME { ... }". Throws SourceError.
SoundSource ParseSound(const Statement& statement);

// All tones together as a whole RIFF WAVE file: 16 bits, one channel. Where they are too loud together the
// whole sound is made quieter.
std::vector<std::uint8_t> RenderSound(const SoundSource& sound);

} // namespace voxtrel::acsc
