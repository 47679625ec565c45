// acsc: the character compiler and inspector.

#include "tools/acsc/commands.h"

#include <cstdio>
#include <string_view>
#include <utility>

namespace voxtrel::acsc {

namespace {

constexpr const char* kUsage =
    "acsc compile FOLDER -o OUT.acs             compile a character from its sources\n"
    "acsc build FOLDER OUT.acs                  the same; of a folder that 'extract' made, put it together "
    "again\n"
    "acsc extract FILE.acs FOLDER               take a character apart: a description, pictures and sounds\n"
    "acsc sheet FILE.acs OUT.png [--animation NAME] [--scale S]\n"
    "                                           draw its frames side by side\n"
    "acsc info FILE.acs                         list what is in it\n"
    "acsc list FILE.acs                         the names of its animations, one a line\n"
    "acsc check FILE.acs                        look for what is against the rules\n";

constexpr std::pair<std::string_view, int (*)(const Arguments&)> kCommands[] = {
    {"compile", CompileCommand}, {"build", BuildCommand}, {"extract", ExtractCommand},
    {"sheet", SheetCommand},     {"info", InfoCommand},   {"list", ListCommand},
    {"check", CheckCommand},
};

int Run(Arguments arguments)
{
    if (arguments.empty())
        return UsageError("no command is given");
    const std::string name = arguments.front();
    if (name == "--help" || name == "-h") {
        std::printf("%s", kUsage);
        return 0;
    }
    arguments.erase(arguments.begin());
    for (const auto& [known, command] : kCommands) {
        if (name == known)
            return command(arguments);
    }
    return UsageError("there is no command '" + name + "'");
}

} // namespace

int UsageError(const std::string& complaint)
{
    std::fprintf(stderr, "acsc: %s\n%s", complaint.c_str(), kUsage);
    return 2;
}

} // namespace voxtrel::acsc

int main(int argc, char** argv) { return voxtrel::acsc::Run({argv + 1, argv + argc}); }
