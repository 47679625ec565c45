#pragma once

#include "app/command_line.h"

#include <string>

namespace voxtrel::app {

inline constexpr int kExitFailure = 1; // what was asked for could not be done
inline constexpr int kExitUsage = 2;   // it made no sense: unknown option, unreadable file

// True when the command line asks for something that needs no window.
bool IsHeadless(RunMode mode);

// Does it, and gives the exit code. programFolder is the folder of the executable.
int RunHeadless(const CommandLine& commandLine, const std::wstring& programFolder);

// The text that the command line asks to be read: of its file, or of the standard input for "-". On failure the
// error was told on standard error and nothing comes back.
bool LoadRequestedText(const CommandLine& commandLine, std::wstring& text);

} // namespace voxtrel::app
