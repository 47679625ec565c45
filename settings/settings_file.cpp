// The file that settings are kept in.
//
//     Voxtrel settings 1
//     application "Orvella"
//     section "voices"
//     "Adult Male 1, US English" = "{CA141FD0-AC7F-11D1-97A3-006008273000}"
//     end
//
// UTF-8, one thing a line, every name and value between quotes, so that a text may hold anything: a backslash
// stands before a quote and a backslash, \n \r \t are the usual ones, and \u{hex} is any other element that
// is no printable code point, torn surrogates included. Lines that are empty or begin with # say nothing. The
// last line tells a whole file from one that was cut off.

#include "settings/settings_file.h"

#include <charconv>
#include <optional>

namespace voxtrel::settings {

namespace {

constexpr std::string_view kFirstLine = "Voxtrel settings 1";
constexpr std::string_view kLastLine = "end";
constexpr std::string_view kApplication = "application ";
constexpr std::string_view kSection = "section ";
constexpr std::string_view kAssign = " = ";

bool NeedsNumber(char32_t codePoint)
{
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) || codePoint == 0x2028 ||
           codePoint == 0x2029 || codePoint == 0xFEFF || codePoint > 0x10FFFF ||
           (codePoint >= 0xD800 && codePoint < 0xE000);
}

void AppendNumber(std::string& bytes, char32_t codePoint)
{
    char digits[8];
    const auto written =
        std::to_chars(digits, digits + sizeof digits, static_cast<std::uint32_t>(codePoint), 16);
    bytes += "\\u{";
    bytes.append(digits, written.ptr);
    bytes += '}';
}

void AppendQuoted(std::string& bytes, std::wstring_view text)
{
    bytes += '"';
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint next = CodePointAt(text, i);
        switch (next.value) {
        case U'"':
        case U'\\':
            bytes += '\\';
            bytes += static_cast<char>(next.value);
            break;
        case U'\n':
            bytes += "\\n";
            break;
        case U'\r':
            bytes += "\\r";
            break;
        case U'\t':
            bytes += "\\t";
            break;
        default:
            if (NeedsNumber(next.value))
                AppendNumber(bytes, next.value);
            else
                bytes += ToUtf8(text.substr(i, next.length));
        }
        i += next.length;
    }
    bytes += '"';
}

// Takes what \u{ begins off the head of the bytes.
bool TakeNumber(std::string_view& bytes, std::wstring& text)
{
    if (!bytes.starts_with('{'))
        return false;
    std::uint32_t number = 0;
    const char* const begin = bytes.data() + 1;
    const auto read = std::from_chars(begin, bytes.data() + bytes.size(), number, 16);
    const auto length = static_cast<std::size_t>(read.ptr - bytes.data());
    if (read.ec != std::errc() || length >= bytes.size() || *read.ptr != '}')
        return false;
    if (number > 0x10FFFF && sizeof(wchar_t) > 2)
        text += static_cast<wchar_t>(number); // what a caller stored is given back, sensible or not
    else
        AppendCodePoint(text, number);
    bytes.remove_prefix(length + 1);
    return true;
}

bool TakeEscape(std::string_view& bytes, std::wstring& text)
{
    if (bytes.empty())
        return false;
    const char escape = bytes.front();
    bytes.remove_prefix(1);
    switch (escape) {
    case '"':
    case '\\':
        text += static_cast<wchar_t>(escape);
        return true;
    case 'n':
        text += L'\n';
        return true;
    case 'r':
        text += L'\r';
        return true;
    case 't':
        text += L'\t';
        return true;
    case 'u':
        return TakeNumber(bytes, text);
    default:
        return false;
    }
}

// Takes a quoted text off the head of the bytes; nothing when there is none.
std::optional<std::wstring> TakeQuoted(std::string_view& bytes)
{
    if (!bytes.starts_with('"'))
        return std::nullopt;
    bytes.remove_prefix(1);
    std::wstring text;
    while (!bytes.empty()) {
        const std::size_t plain = bytes.find_first_of("\"\\");
        if (plain == std::string_view::npos)
            return std::nullopt;
        text += FromUtf8(bytes.substr(0, plain));
        const bool closed = bytes[plain] == '"';
        bytes.remove_prefix(plain + 1);
        if (closed)
            return text;
        if (!TakeEscape(bytes, text))
            return std::nullopt;
    }
    return std::nullopt;
}

class Parser {
public:
    // What is wrong with the line, or null.
    const wchar_t* TakeLine(std::string_view line, SettingsTree& tree)
    {
        if (FindInvalidUtf8(line) != std::string_view::npos)
            return L"it is not UTF-8";
        if (line.starts_with('"'))
            return TakePair(line, tree);
        if (line.starts_with(kApplication)) {
            section_.reset();
            return TakeName(line.substr(kApplication.size()), application_);
        }
        if (line.starts_with(kSection))
            return TakeName(line.substr(kSection.size()), section_);
        return L"it is neither a section nor a value";
    }

private:
    static const wchar_t* TakeName(std::string_view rest, std::optional<std::wstring>& name)
    {
        name = TakeQuoted(rest);
        return name && rest.empty() ? nullptr : L"a name between quotes is missing";
    }

    const wchar_t* TakePair(std::string_view line, SettingsTree& tree) const
    {
        const auto key = TakeQuoted(line);
        if (!key || !line.starts_with(kAssign))
            return L"a name between quotes and an equals sign are missing";
        line.remove_prefix(kAssign.size());
        const auto value = TakeQuoted(line);
        if (!value || !line.empty())
            return L"a value between quotes is missing";
        if (!application_ || !section_)
            return L"the value stands in no section";
        tree.Set(*application_, *section_, *key, *value);
        return nullptr;
    }

    std::optional<std::wstring> application_;
    std::optional<std::wstring> section_;
};

std::string_view TakeLine(std::string_view& bytes)
{
    const std::size_t end = bytes.find('\n');
    std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace

ParsedSettings ParseSettingsFile(std::string_view bytes)
{
    if (bytes.empty())
        return {{}, L"it is empty"};
    if (TakeLine(bytes) != kFirstLine)
        return {{}, L"line 1: it does not begin as a settings file does"};

    ParsedSettings parsed;
    Parser parser;
    for (int lineNumber = 2; !bytes.empty(); ++lineNumber) {
        const std::string_view line = TakeLine(bytes);
        if (line == kLastLine)
            return parsed;
        if (line.empty() || line.starts_with('#'))
            continue;
        if (const wchar_t* const wrong = parser.TakeLine(line, parsed.tree))
            return {{}, L"line " + std::to_wstring(lineNumber) + L": " + wrong};
    }
    return {{}, L"it is cut off: the last line is missing"};
}

std::string SerialiseSettingsFile(const SettingsTree& tree)
{
    std::string bytes(kFirstLine);
    bytes += '\n';
    const SettingsTree::Section* previous = nullptr;
    for (const SettingsTree::Section& section : tree.Sections()) {
        if (previous == nullptr || previous->application != section.application) {
            bytes += kApplication;
            AppendQuoted(bytes, section.application);
            bytes += '\n';
        }
        previous = &section;
        bytes += kSection;
        AppendQuoted(bytes, section.name);
        bytes += '\n';
        for (const auto& [key, value] : section.pairs) {
            AppendQuoted(bytes, key);
            bytes += kAssign;
            AppendQuoted(bytes, value);
            bytes += '\n';
        }
    }
    bytes += kLastLine;
    bytes += '\n';
    return bytes;
}

} // namespace voxtrel::settings
