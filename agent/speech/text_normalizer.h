#pragma once

#include "agent/speech/prosody.h"

#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::speech {

// How speech goes on after a word.
enum class Break { None, Comma, Semicolon, Sentence, Paragraph };

// A word to be said, in the plain characters that an English synthesizer takes.
struct SpokenToken {
    // Letters, digits and apostrophes, or a figure such as 3.14, $5 or 10:30. For a voice of the system the
    // word as it is written, in UTF-8, with its punctuation.
    std::string name;
    char punctuation = 0; // one of , . ? ! : ; that follows, or 0
    bool emphasized = false;

    friend bool operator==(const SpokenToken&, const SpokenToken&) = default;
};

// What is said for a run of text without white space, which may be any text at all.
struct NormalizedRun {
    std::vector<SpokenToken> tokens; // none if nothing of the run can be said
    Break ending = Break::None;      // after the last token; it counts without tokens as well
};

// Makes text sayable: typographic signs become plain ones, letters lose their accents, symbols become words,
// figures stay whole; what an English voice has no sound for is left out. No token is longer than the
// synthesizer can bear, however long the run.
NormalizedRun NormalizeRun(std::wstring_view run, ReadingContext context);

// What a seam between two pieces of markup does at this character: whether it can stand at the edge of a
// word of its own. An apostrophe or a letter such as sharp s goes with its neighbours.
bool StandsAlone(char32_t c);

} // namespace voxtrel::agent::speech
