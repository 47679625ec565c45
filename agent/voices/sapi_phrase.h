#pragma once

#include "agent/speech/voice_engine.h"

#include <cstddef>
#include <string>
#include <vector>

// A phrase in the terms of SAPI 5.
namespace voxtrel::agent::voices {

// The phrase as SAPI's own XML, at its pitch: each word behind a bookmark that is named by the word's index.
struct SapiMarkup {
    std::wstring text;
    std::vector<std::size_t> offsets; // where each word begins, its bookmark not counted, in wide characters
};
SapiMarkup SapiMarkupOf(const speech::Phrase& phrase);

// The voice's rate, -10 (a third of the usual) to 10 (three times as fast).
long SapiRate(const speech::Prosody& prosody);

// The middle of the voice's pitch, -10 (three quarters of the usual) to 10 (four thirds).
long SapiPitch(const speech::Prosody& prosody);

// The mouth that goes with a viseme; closed for numbers that there are not.
acs::Mouth MouthOfViseme(unsigned viseme);

} // namespace voxtrel::agent::voices
