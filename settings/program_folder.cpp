#include "settings/program_folder.h"

#include "settings/file_path.h"
#include "settings/text_case.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace voxtrel::settings {

namespace {

constexpr wchar_t kSeparator = std::filesystem::path::preferred_separator;
constexpr std::wstring_view kCharacterExtension = L".acs";
constexpr std::wstring_view kAccServerName = kSeparator == L'\\' ? L"ovaccserver.exe" : L"ovaccserver";

std::wstring Join(std::wstring_view folder, std::wstring_view name)
{
    std::wstring path(folder);
    path += kSeparator;
    path += name;
    return path;
}

std::vector<std::wstring> CharacterFileNames(const std::wstring& folder)
{
    std::vector<std::wstring> names;
    std::error_code failure;
    std::filesystem::directory_iterator entries(ToPath(folder), failure);
    for (; !failure && entries != std::filesystem::directory_iterator(); entries.increment(failure)) {
        std::wstring name = FromPath(entries->path().filename());
        const std::size_t stem = name.size() - std::min(name.size(), kCharacterExtension.size());
        if (SameName(std::wstring_view(name).substr(stem), kCharacterExtension))
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

ProgramFolder::ProgramFolder(std::wstring_view path) : path_(path)
{
    while (path_.size() > 1 && (path_.back() == kSeparator || path_.back() == L'/'))
        path_.pop_back();
}

std::wstring ProgramFolder::CharacterFile(std::wstring_view name) const
{
    const std::wstring folder = Join(path_, L"characters");
    const std::wstring wanted = std::wstring(name).append(kCharacterExtension);
    std::wstring path = Join(folder, wanted);
    std::error_code failure;
    if (std::filesystem::exists(ToPath(path), failure))
        return path;
    for (const std::wstring& candidate : CharacterFileNames(folder)) {
        if (SameName(candidate, wanted))
            return Join(folder, candidate);
    }
    return path;
}

std::vector<std::wstring> ProgramFolder::CharacterNames() const
{
    std::vector<std::wstring> names = CharacterFileNames(Join(path_, L"characters"));
    for (std::wstring& name : names)
        name.resize(name.size() - kCharacterExtension.size());
    return names;
}

std::wstring ProgramFolder::Beside(std::wstring_view name) const { return Join(path_, name); }

std::wstring ProgramFolder::AccServer() const { return Join(path_, kAccServerName); }

std::wstring ProgramFolder::HelpFile() const { return Join(Join(path_, L"Help"), L"helpfile.hlp"); }

} // namespace voxtrel::settings
