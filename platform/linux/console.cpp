#include "platform/console.h"

#include "settings/file_path.h"
#include "settings/text_case.h"

#include <filesystem>
#include <iostream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace voxtrel::platform {

std::vector<std::wstring> ProgramArguments(int argc, char** argv)
{
    std::vector<std::wstring> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.push_back(settings::FromUtf8(argv[i]));
    return arguments;
}

std::wstring ExecutableFolder()
{
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::wstring(L".") : settings::FromPath(self.parent_path());
}

void WriteOutput(std::wstring_view text)
{
    std::cout << settings::ToUtf8(text) << std::flush;
}

void WriteError(std::wstring_view text)
{
    std::cerr << settings::ToUtf8(text) << std::flush;
}

std::string ReadStandardInput() { return {std::istreambuf_iterator<char>(std::cin), {}}; }

std::optional<std::wstring> AskAtTerminal(std::wstring_view question)
{
    if (isatty(STDIN_FILENO) == 0)
        return std::nullopt;
    WriteOutput(question);
    std::string line;
    if (!std::getline(std::cin, line))
        return std::nullopt;
    return settings::FromUtf8(line);
}

std::ostream& BinaryOutput() { return std::cout; }

} // namespace voxtrel::platform
