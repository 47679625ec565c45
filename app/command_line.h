#pragma once

#include "agent/control_choice.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::app {

// What the program was asked to do when it was started.
enum class RunMode {
    Interactive,    // voxtrel
    ReadFile,       // voxtrel FILE
    Speak,          // --speak TEXT
    Read,           // --read TEXT
    Options,        // --options
    Quit,           // --quit
    Execute,        // --execute STRING
    Wav,            // --wav OUT (--speak TEXT | FILE | -)
    ListVoices,     // --list-voices
    AddVoices,      // --add-voices [NAME...]
    ListCharacters, // --list-characters
    Version,        // --version
    Help,           // --help
};

struct CommandLine {
    RunMode mode = RunMode::Interactive;
    std::wstring text;                // of Speak, Read, Execute and of Wav without a file
    std::wstring file;                // of ReadFile and Wav; "-" is the standard input
    std::wstring wavPath;             // of Wav; "-" is the standard output
    std::vector<std::wstring> names;  // of AddVoices
    std::optional<std::wstring> voice; // display name of a voice
    std::optional<int> pitch;         // Hz
    std::optional<int> speed;         // words per minute
    std::optional<int> volume;        // 0..65535
    std::wstring traceFile;           // empty for no trace
    agent::CharacterServer characterServer = agent::CharacterServer::WhatIsThere;
};

struct ParsedCommandLine {
    CommandLine commandLine;
    std::wstring error; // empty when the arguments make sense; else a sentence for the user
};

// Understands the arguments behind the program's name. Options take their value as the next argument or after "=";
// "--" ends the options.
ParsedCommandLine ParseCommandLine(const std::vector<std::wstring>& arguments);

// The text of --help.
std::wstring_view HelpText();

} // namespace voxtrel::app
