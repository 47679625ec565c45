#pragma once

#include <string>
#include <vector>

// The commands of acsc. Each takes the words after its name and gives the exit code of the program: 0, 1 for
// a character that is not as it should be, 2 for a wrong command line or a file that cannot be read.
namespace voxtrel::acsc {

using Arguments = std::vector<std::string>; // UTF-8

int CompileCommand(const Arguments& arguments);
int BuildCommand(const Arguments& arguments);
int ExtractCommand(const Arguments& arguments);
int SheetCommand(const Arguments& arguments);
int InfoCommand(const Arguments& arguments);
int ListCommand(const Arguments& arguments);
int CheckCommand(const Arguments& arguments);

// Tells what is wrong with the command line, and how it should be.
int UsageError(const std::string& complaint);

} // namespace voxtrel::acsc
