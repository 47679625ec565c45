#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::platform {

// The arguments behind the program's name, as Unicode whatever the console's code page.
std::vector<std::wstring> ProgramArguments(int argc, char** argv);

// The folder of the running executable, without a closing separator.
std::wstring ExecutableFolder();

// Text for whoever started the program from a console or a script.
void WriteOutput(std::wstring_view text);
void WriteError(std::wstring_view text);

// All of the standard input, as bytes.
std::string ReadStandardInput();

// Asks whoever sits at the terminal and waits for a line. Nothing when the standard input is no terminal or has ended,
// and on Windows, where the program shares the console that it was started from with the shell.
std::optional<std::wstring> AskAtTerminal(std::wstring_view question);

// The standard output as a stream of bytes, for sound.
std::ostream& BinaryOutput();

} // namespace voxtrel::platform
