#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::settings {

// The folder that the program runs from, and what lies beside it. Paths have the platform's separator.
class ProgramFolder {
public:
    // The path may end in a separator.
    explicit ProgramFolder(std::wstring_view path);

    const std::wstring& Path() const { return path_; }

    // The file of the character with this name, whatever the capitals of name and file. Without such a file:
    // the path where it would be.
    std::wstring CharacterFile(std::wstring_view name) const;

    // The names of all characters, without extension, in alphabetical order.
    std::vector<std::wstring> CharacterNames() const;

    // A file or folder of this name in the program folder.
    std::wstring Beside(std::wstring_view name) const;

    std::wstring AccServer() const;
    std::wstring HelpFile() const;

private:
    std::wstring path_; // without a separator at the end
};

} // namespace voxtrel::settings
