#pragma once

#include "app/command_line.h"

#include <string>

namespace voxtrel::app {

// Writes the speech of the command line's text to its sound file, with the user's settings and pronunciations, as
// fast as the machine can. Gives the exit code; what went wrong is told on standard error.
int WriteWav(const CommandLine& commandLine, const std::wstring& programFolder);

} // namespace voxtrel::app
