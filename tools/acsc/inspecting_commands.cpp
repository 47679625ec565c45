#include "agent/acs/reader.h"
#include "agent/acs/unicode.h"
#include "tools/acsc/check.h"
#include "tools/acsc/commands.h"
#include "tools/acsc/summary.h"

#include <cstdio>
#include <optional>
#include <utility>

namespace voxtrel::acsc {

namespace {

// The character in the one file that is named; tells what is wrong otherwise.
std::optional<agent::acs::CharacterFile> Load(const std::string& path)
{
    agent::acs::ReadOutcome read = agent::acs::LoadCharacterFile(agent::acs::WideFromUtf8(path));
    if (read.result.Ok())
        return std::move(read.character);
    std::fprintf(stderr, "acsc: %s: %s\n", path.c_str(),
                 agent::acs::Utf8FromWide(read.result.description).c_str());
    return std::nullopt;
}

} // namespace

int InfoCommand(const Arguments& arguments)
{
    if (arguments.size() != 1)
        return UsageError("info needs one FILE.acs");
    const auto character = Load(arguments.front());
    if (!character)
        return 2;
    std::printf("%s", Description(*character).c_str());
    return 0;
}

int ListCommand(const Arguments& arguments)
{
    if (arguments.size() != 1)
        return UsageError("list needs one FILE.acs");
    const auto character = Load(arguments.front());
    if (!character)
        return 2;
    for (const agent::acs::Animation& animation : character->animations)
        std::printf("%s\n", agent::acs::Utf8FromWide(animation.name).c_str());
    return 0;
}

int CheckCommand(const Arguments& arguments)
{
    if (arguments.size() != 1)
        return UsageError("check needs one FILE.acs");
    const auto character = Load(arguments.front());
    if (!character)
        return 2;
    bool sound = true;
    for (const Finding& finding : CheckCharacter(*character)) {
        const bool error = finding.weight == Finding::Weight::Error;
        sound = sound && !error;
        std::printf("%s: %s\n", error ? "error" : "warning", finding.text.c_str());
    }
    std::printf("%s: %s\n", arguments.front().c_str(), sound ? "keeps the rules" : "breaks rules");
    return sound ? 0 : 1;
}

} // namespace voxtrel::acsc
