#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::settings {

// The numbered texts of the program in the user's language.
class StringTable {
public:
    // Nothing when no text has that number; the caller leaves what stands in the layout.
    std::optional<std::wstring> Find(int number) const;

    // The same, with an empty text for none.
    std::wstring Text(int number) const { return Find(number).value_or(std::wstring()); }

    void Set(int number, std::wstring text) { texts_[number] = std::move(text); }
    std::size_t Size() const { return texts_.size(); }

    // Takes over every text of the other table, over its own where both have one.
    void Merge(const StringTable& other);

private:
    std::map<int, std::wstring> texts_;
};

// A table as it was read, and what was wrong with it: sentences that name the file and the line. Every sound
// line counts, whatever the others are.
struct LoadedStringTable {
    StringTable table;
    std::vector<std::wstring> problems;
};

// One text a line: its number, a tab, the text, in which \n is a line break, \t a tab and \\ a backslash.
// Lines that begin with # and empty lines say nothing. fileName is used in the problems only.
LoadedStringTable ParseStringTable(std::string_view bytes, std::wstring_view fileName);

// The table of a language such as "de" or "de_AT.UTF-8" from the files of a folder (de_AT.txt over de.txt);
// what they lack is English (en.txt). A language without any file is no problem, a folder without English is
// one.
LoadedStringTable LoadStringTable(std::wstring_view folder, std::wstring_view language);

// The text with its first "%s" replaced by the value; unchanged without one.
std::wstring FormatResString(std::wstring_view text, std::wstring_view value);

} // namespace voxtrel::settings
