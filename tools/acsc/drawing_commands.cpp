#include "agent/acs/reader.h"
#include "agent/acs/unicode.h"
#include "agent/acs/writer.h"
#include "tools/acsc/commands.h"
#include "tools/acsc/compiler.h"
#include "tools/acsc/sheet.h"
#include "tools/acsc/statement.h"
#include "tools/acsc/summary.h"
#include "tools/acsc/take_apart.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

namespace voxtrel::acsc {

namespace {

// Written beside and renamed, so that a build that is broken off leaves no half file.
bool WriteWhole(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes)
{
    std::filesystem::path beside = path;
    beside += ".part";
    {
        std::ofstream stream(beside, std::ios::binary);
        stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!stream.flush())
            return false;
    }
    std::error_code error;
    std::filesystem::rename(beside, path, error);
    return !error;
}

std::optional<double> ParseScale(const std::string& text)
{
    const Statement single{0, {{text, false}}, false, {}};
    try {
        const double scale = WordReader(single).Number("a scale");
        return scale >= 0.1 && scale <= 8 ? std::optional(scale) : std::nullopt;
    } catch (const SourceError&) {
        return std::nullopt;
    }
}

// Writes a character that was made and says how large it is, or why it was not made.
int WriteMade(const std::variant<agent::acs::CharacterFile, CompileError>& made, const std::string& out)
{
    if (const auto* error = std::get_if<CompileError>(&made)) {
        std::fprintf(stderr, "%s\n", error->message.c_str());
        return 1;
    }
    const auto& character = std::get<agent::acs::CharacterFile>(made);
    const std::vector<std::uint8_t> bytes = WriteCharacterFile(character);
    if (!WriteWhole(out, bytes)) {
        std::fprintf(stderr, "acsc: %s cannot be written\n", out.c_str());
        return 2;
    }
    std::printf("%s: %s, %zu KB\n", out.c_str(), Summary(character).c_str(), (bytes.size() + 1023) / 1024);
    return 0;
}

} // namespace

int CompileCommand(const Arguments& arguments)
{
    std::string folder, out;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "-o" && i + 1 < arguments.size())
            out = arguments[++i];
        else if (folder.empty())
            folder = arguments[i];
        else
            return UsageError("'" + arguments[i] + "' was not expected");
    }
    if (folder.empty() || out.empty())
        return UsageError("compile needs a folder and -o OUT.acs");

    return WriteMade(CompileCharacter(folder), out);
}

int BuildCommand(const Arguments& arguments)
{
    if (arguments.size() != 2)
        return UsageError("build needs a folder and OUT.acs");
    const std::string& folder = arguments[0];
    return WriteMade(IsTakenApart(folder) ? PutTogether(folder) : CompileCharacter(folder), arguments[1]);
}

int ExtractCommand(const Arguments& arguments)
{
    if (arguments.size() != 2)
        return UsageError("extract needs FILE.acs and a folder");
    const agent::acs::ReadOutcome read =
        agent::acs::LoadCharacterFile(agent::acs::WideFromUtf8(arguments[0]));
    const std::string error = read.result.Ok() ? TakeApart(read.character, arguments[1])
                                               : agent::acs::Utf8FromWide(read.result.description);
    if (error.empty())
        return 0;
    std::fprintf(stderr, "acsc: %s\n", error.c_str());
    return 2;
}

int SheetCommand(const Arguments& arguments)
{
    std::vector<std::string> files;
    std::wstring animation;
    std::optional<double> scale;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool hasValue = i + 1 < arguments.size();
        if (arguments[i] == "--animation" && hasValue) {
            animation = agent::acs::WideFromUtf8(arguments[++i]);
        } else if (arguments[i] == "--scale" && hasValue) {
            scale = ParseScale(arguments[++i]);
            if (!scale)
                return UsageError("a scale is a number from 0.1 to 8");
        } else {
            files.push_back(arguments[i]);
        }
    }
    if (files.size() != 2)
        return UsageError("sheet needs FILE.acs and OUT.png");
    const agent::acs::ReadOutcome read = agent::acs::LoadCharacterFile(agent::acs::WideFromUtf8(files[0]));
    if (!read.result.Ok()) {
        std::fprintf(stderr, "acsc: %s\n", agent::acs::Utf8FromWide(read.result.description).c_str());
        return 2;
    }
    const double usual = animation.empty() ? 0.5 : 1.5;
    const std::string error = DrawSheet(read.character, {animation, scale.value_or(usual)}, files[1]);
    if (!error.empty()) {
        std::fprintf(stderr, "acsc: %s\n", error.c_str());
        return 2;
    }
    return 0;
}

} // namespace voxtrel::acsc
