#include "screenreading/server_protocol.h"

#include "settings/text_case.h"

#include <array>
#include <utility>
#include <vector>

namespace voxtrel::screenreading {
namespace {

using platform::AccessibleObject;
using platform::SwitchState;

constexpr std::string_view kObject = "object";

constexpr std::array<std::pair<SwitchState, std::string_view>, 6> kStates = {{
    {SwitchState::None, "-"},
    {SwitchState::Unchecked, "unchecked"},
    {SwitchState::Checked, "checked"},
    {SwitchState::PartlyChecked, "mixed"},
    {SwitchState::Released, "released"},
    {SwitchState::Pressed, "pressed"},
}};

constexpr std::array<std::pair<char, char>, 4> kEscapes = {
    {{'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}, {'\\', '\\'}}};

void AppendField(std::string& line, std::wstring_view text)
{
    line += '\t';
    for (const char c : settings::ToUtf8(text)) {
        bool escaped = false;
        for (const auto& [plain, letter] : kEscapes) {
            if (c == plain) {
                line += '\\';
                line += letter;
                escaped = true;
            }
        }
        if (!escaped)
            line += c;
    }
}

std::wstring DecodeField(std::string_view field)
{
    std::string bytes;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\' || i + 1 == field.size()) {
            bytes += field[i];
            continue;
        }
        ++i;
        for (const auto& [plain, letter] : kEscapes) {
            if (field[i] == letter)
                bytes += plain;
        }
    }
    return settings::FromUtf8(bytes);
}

std::vector<std::string_view> Fields(std::string_view line)
{
    std::vector<std::string_view> fields;
    for (std::size_t start = 0;;) {
        const std::size_t end = line.find('\t', start);
        fields.push_back(line.substr(start, end - start));
        if (end == std::string_view::npos)
            return fields;
        start = end + 1;
    }
}

std::optional<AccessibleObject> DecodeObject(std::string_view line)
{
    const std::vector<std::string_view> fields = Fields(line);
    if (fields.size() != 5 || fields[0] != kObject)
        return std::nullopt;
    for (const auto& [state, word] : kStates) {
        if (fields[4] == word)
            return AccessibleObject{.name = DecodeField(fields[2]),
                                    .role = DecodeField(fields[1]),
                                    .value = DecodeField(fields[3]),
                                    .state = state};
    }
    return std::nullopt;
}

} // namespace

std::string EncodeObject(const AccessibleObject& object)
{
    std::string line(kObject);
    AppendField(line, object.role);
    AppendField(line, object.name);
    AppendField(line, object.value);
    line += '\t';
    for (const auto& [state, word] : kStates) {
        if (object.state == state)
            line += word;
    }
    line += '\n';
    return line;
}

std::optional<AccessibleObject> ObjectReader::Take(std::string_view bytes)
{
    std::optional<AccessibleObject> last;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        line_.append(bytes.substr(0, end));
        if (line_.size() > kMaxLine) {
            tooLong_ = true;
            line_.clear();
        }
        if (end == std::string_view::npos)
            break;
        if (!tooLong_) {
            if (auto object = DecodeObject(line_))
                last = std::move(object);
        }
        tooLong_ = false;
        line_.clear();
        bytes.remove_prefix(end + 1);
    }
    return last;
}

} // namespace voxtrel::screenreading
