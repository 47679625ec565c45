#pragma once

#include "agent/speech/voice_engine.h"

#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::voices {

// A phrase as text for an engine, in UTF-8.
struct PhraseMarkup {
    std::string text;
    std::vector<std::size_t> offsets; // where each word begins, in code points
    bool isXml = false;
};

// The words with a blank between them.
PhraseMarkup PlainMarkup(const speech::Phrase& phrase);

// As a speak element in which words are emphasized as the phrase says.
PhraseMarkup EmphasizedMarkup(const speech::Phrase& phrase);

// As EmphasizedMarkup, with a mark before each word, named prefix and its index.
PhraseMarkup MarkedMarkup(const speech::Phrase& phrase, std::string_view prefix);

} // namespace voxtrel::agent::voices
