#include "platform/console.h"

#include "platform/windows/windows_headers.h"
#include "settings/text_case.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <shellapi.h>

namespace voxtrel::platform {
namespace {

// The handle to write to: what the caller redirected, else the console it was started from. The program has no
// console of its own.
HANDLE StandardHandle(DWORD which)
{
    const HANDLE handle = GetStdHandle(which);
    if (handle && handle != INVALID_HANDLE_VALUE)
        return handle;
    static const bool attached = AttachConsole(ATTACH_PARENT_PROCESS) != 0;
    return attached ? GetStdHandle(which) : INVALID_HANDLE_VALUE;
}

void WriteBytes(HANDLE handle, const void* bytes, std::size_t size)
{
    const char* next = static_cast<const char*>(bytes);
    while (size > 0) {
        DWORD written = 0;
        const DWORD wanted = static_cast<DWORD>(size < 65536 ? size : 65536);
        if (!WriteFile(handle, next, wanted, &written, nullptr) || written == 0)
            return;
        next += written;
        size -= written;
    }
}

void WriteText(DWORD which, std::wstring_view text)
{
    const HANDLE handle = StandardHandle(which);
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode)) {
        DWORD written = 0;
        WriteConsoleW(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        return;
    }
    const std::string utf8 = settings::ToUtf8(text);
    WriteBytes(handle, utf8.data(), utf8.size());
}

} // namespace

std::vector<std::wstring> ProgramArguments(int, char**)
{
    int count = 0;
    wchar_t** texts = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::wstring> arguments;
    for (int i = 1; texts && i < count; ++i)
        arguments.emplace_back(texts[i]);
    LocalFree(texts);
    return arguments;
}

std::wstring ExecutableFolder()
{
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    return path.substr(0, path.find_last_of(L'\\'));
}

void WriteOutput(std::wstring_view text) { WriteText(STD_OUTPUT_HANDLE, text); }

void WriteError(std::wstring_view text) { WriteText(STD_ERROR_HANDLE, text); }

std::string ReadStandardInput()
{
    const HANDLE handle = GetStdHandle(STD_INPUT_HANDLE);
    std::string all;
    char chunk[65536];
    DWORD count = 0;
    while (ReadFile(handle, chunk, sizeof chunk, &count, nullptr) && count > 0)
        all.append(chunk, count);
    return all;
}

std::optional<std::wstring> AskAtTerminal(std::wstring_view) { return std::nullopt; }

std::ostream& BinaryOutput()
{
    _setmode(_fileno(stdout), _O_BINARY);
    return std::cout;
}

} // namespace voxtrel::platform
