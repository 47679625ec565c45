#pragma once

#include "agent/speech/synthesizer.h"
#include "agent/speech/voice_engine.h"

namespace voxtrel::agent::speech {

// What an engine has told of its own sound.
struct ReportedWord {
    std::int64_t sample = 0;
    std::size_t word = 0;
};

// How long a word takes compared with others: its letters, and more for figures.
std::size_t SpokenLength(std::wstring_view word);

// Where each word of the phrase begins between two samples. Engines merge words, cut one into several, or say
// nothing at all: a word that was not reported gets its share of the time between its neighbours, by its
// length, and no word comes before the one before it.
std::vector<std::int64_t> PlaceWords(const Phrase& phrase, std::span<const ReportedWord> reported,
                                     std::int64_t speechStart, std::int64_t speechEnd);

// The mouths of a word that sounds from start to end, by its letters.
std::vector<Phoneme> MouthsOfWord(std::wstring_view word, std::int64_t start, std::int64_t end);

// The mouth that goes with a sound in the letters of the international phonetic alphabet.
acs::Mouth MouthOfSound(char32_t sound);

} // namespace voxtrel::agent::speech
