#include "settings/string_table.h"

#include "settings/text_case.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace voxtrel::settings {

namespace {

// A line of a table, or what is wrong with it.
struct Line {
    int number = 0;
    std::wstring text;
    std::wstring problem;
};

Line Wrong(std::wstring problem) { return {0, {}, std::move(problem)}; }

Line ParseText(int number, std::string_view escaped)
{
    if (FindInvalidUtf8(escaped) != std::string_view::npos)
        return Wrong(L"the text is not UTF-8");
    Line line{number, {}, {}};
    const std::wstring text = FromUtf8(escaped);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\\') {
            line.text += text[i];
            continue;
        }
        const wchar_t escape = ++i < text.size() ? text[i] : L'\0';
        if (escape == L'n')
            line.text += L'\n';
        else if (escape == L't')
            line.text += L'\t';
        else if (escape == L'\\')
            line.text += L'\\';
        else
            return Wrong(L"a backslash is followed by something other than n, t or a backslash");
    }
    return line;
}

Line ParseLine(std::string_view line)
{
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos)
        return Wrong(L"there is no tab between the number and the text");
    int number = 0;
    const char* const end = line.data() + tab;
    const auto read = std::from_chars(line.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end || number <= 0)
        return Wrong(L"the line does not begin with a number of 1 or more and a tab");
    return ParseText(number, line.substr(tab + 1));
}

std::filesystem::path TablePath(std::wstring_view folder, std::wstring_view language)
{
    const std::string bytes = ToUtf8(std::wstring(folder) + L"/" + std::wstring(language) + L".txt");
    return {std::u8string(bytes.begin(), bytes.end())};
}

std::optional<std::string> ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string{std::istreambuf_iterator<char>(file), {}};
}

// "de_AT.UTF-8@euro" gives "de" and "de_AT"; what could leave the folder gives nothing.
std::vector<std::wstring> FileNamesOf(std::wstring_view language)
{
    std::wstring name(language.substr(0, language.find_first_of(L".@")));
    for (wchar_t& c : name) {
        if (c == L'-')
            c = L'_';
        const bool usual =
            (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'_';
        if (!usual)
            return {};
    }
    std::vector<std::wstring> names{SimpleLower(name.substr(0, name.find(L'_')))};
    if (name.find(L'_') != std::wstring::npos)
        names.push_back(name);
    return names;
}

void Overlay(LoadedStringTable& loaded, std::string_view bytes, std::wstring_view fileName)
{
    const LoadedStringTable other = ParseStringTable(bytes, fileName);
    loaded.table.Merge(other.table);
    loaded.problems.insert(loaded.problems.end(), other.problems.begin(), other.problems.end());
}

} // namespace

std::optional<std::wstring> StringTable::Find(int number) const
{
    const auto found = texts_.find(number);
    return found == texts_.end() ? std::nullopt : std::optional(found->second);
}

void StringTable::Merge(const StringTable& other)
{
    for (const auto& [number, text] : other.texts_)
        texts_[number] = text;
}

LoadedStringTable ParseStringTable(std::string_view bytes, std::wstring_view fileName)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark))
        bytes.remove_prefix(kByteOrderMark.size());

    LoadedStringTable loaded;
    const auto complain = [&](int lineNumber, const std::wstring& problem) {
        loaded.problems.push_back(std::wstring(fileName) + L", line " + std::to_wstring(lineNumber) + L": " +
                                  problem);
    };
    for (int lineNumber = 1; !bytes.empty(); ++lineNumber) {
        const std::size_t end = bytes.find('\n');
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (line.empty() || line.starts_with('#'))
            continue;
        Line parsed = ParseLine(line);
        if (!parsed.problem.empty())
            complain(lineNumber, parsed.problem);
        else if (loaded.table.Find(parsed.number))
            complain(lineNumber, L"the number " + std::to_wstring(parsed.number) + L" is used twice");
        else
            loaded.table.Set(parsed.number, std::move(parsed.text));
    }
    return loaded;
}

LoadedStringTable LoadStringTable(std::wstring_view folder, std::wstring_view language)
{
    LoadedStringTable loaded;
    if (const auto english = ReadFile(TablePath(folder, L"en")))
        Overlay(loaded, *english, L"en.txt");
    else
        loaded.problems.push_back(L"The English texts cannot be read: there is no readable en.txt in " +
                                  std::wstring(folder));
    for (const std::wstring& name : FileNamesOf(language)) {
        if (name == L"en")
            continue;
        if (const auto bytes = ReadFile(TablePath(folder, name)))
            Overlay(loaded, *bytes, name + L".txt");
    }
    return loaded;
}

std::wstring FormatResString(std::wstring_view text, std::wstring_view value)
{
    constexpr std::wstring_view kPlace = L"%s";
    std::wstring filled(text);
    const std::size_t place = filled.find(kPlace);
    if (place != std::wstring::npos)
        filled.replace(place, kPlace.size(), value);
    return filled;
}

} // namespace voxtrel::settings
