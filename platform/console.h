#pragma once

#include <iosfwd>
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

// The standard output as a stream of bytes, for sound.
std::ostream& BinaryOutput();

} // namespace voxtrel::platform
