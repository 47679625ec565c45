#include "app/trace.h"

#include "settings/file_path.h"
#include "settings/text_case.h"

#include <algorithm>
#include <cstdio>

namespace voxtrel::app {
namespace {

void AppendQuoted(std::string& line, std::string_view utf8)
{
    line += '"';
    for (const char c : utf8) {
        if (c == '"' || c == '\\') {
            line += '\\';
            line += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
            line += escape;
        } else {
            line += c;
        }
    }
    line += '"';
}

// A book that is read aloud must not cost the reader the time of writing it down.
constexpr std::size_t kLongestText = 4000;

void AppendText(std::string& line, std::wstring_view text)
{
    if (text.size() <= kLongestText)
        return AppendQuoted(line, settings::ToUtf8(text));
    AppendQuoted(line, settings::ToUtf8(text.substr(0, kLongestText)) + "... (" + std::to_string(text.size()) +
                           " characters)");
}

void AppendValue(std::string& line, const Trace::Value& value)
{
    if (const auto* number = std::get_if<std::int64_t>(&value))
        line += std::to_string(*number);
    else if (const auto* flag = std::get_if<bool>(&value))
        line += *flag ? "true" : "false";
    else
        AppendText(line, std::get<std::wstring_view>(value));
}

} // namespace

bool Trace::Open(std::wstring_view path)
{
    start_ = std::chrono::steady_clock::now();
    file_.open(settings::ToPath(path), std::ios::binary | std::ios::trunc);
    return file_.is_open();
}

void Trace::Write(std::string_view event, std::initializer_list<Field> fields)
{
    if (!IsOpen())
        return;
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_);
    std::string line = "{\"t\":" + std::to_string(elapsed.count()) + ",\"event\":";
    AppendQuoted(line, event);
    for (const Field& field : fields) {
        line += ',';
        AppendQuoted(line, field.name);
        line += ':';
        AppendValue(line, field.value);
    }
    line += "}\n";
    // Flushed line by line: a trace is read while the program runs, and after it was killed.
    file_.write(line.data(), static_cast<std::streamsize>(line.size())).flush();
}

} // namespace voxtrel::app
