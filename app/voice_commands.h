#pragma once

#include "agent/speech/voice_catalogue.h"
#include "app/command_line.h"

#include <memory>

namespace voxtrel::app {

// The voices of the system; none of them is asked for before it is needed.
std::shared_ptr<agent::speech::VoiceCatalogue> MakeSystemVoices();

// voxtrel --list-voices: those of the options dialog, and those that could be added to it.
int ListVoices();

// voxtrel --add-voices: puts voices of the system into the list of the options dialog. Without names they are
// asked for at the terminal, where there is one. Returns the exit code.
int AddVoices(const CommandLine& commandLine);

} // namespace voxtrel::app
