#include "platform/console.h"

#include "settings/file_path.h"
#include "settings/text_case.h"

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <iterator>

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
    const std::string utf8 = settings::ToUtf8(text);
    WriteOutputBytes(utf8.data(), utf8.size());
}

void WriteError(std::wstring_view text)
{
    const std::string utf8 = settings::ToUtf8(text);
    std::fwrite(utf8.data(), 1, utf8.size(), stderr);
    std::fflush(stderr);
}

std::string ReadStandardInput() { return {std::istreambuf_iterator<char>(std::cin), {}}; }

void WriteOutputBytes(const void* bytes, std::size_t size)
{
    std::fwrite(bytes, 1, size, stdout);
    std::fflush(stdout);
}

} // namespace voxtrel::platform
