#include "tools/acsc/pose_parser.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace voxtrel::acsc {

namespace {

constexpr std::array<std::string_view, 7> kMouthNames{"closed", "slight", "partly", "open",
                                                      "fully",  "medium", "narrow"};

int IndexOf(const std::vector<Part>& parts, std::string_view name)
{
    const auto found =
        std::find_if(parts.begin(), parts.end(), [&](const Part& part) { return part.name == name; });
    return found == parts.end() ? -1 : static_cast<int>(found - parts.begin());
}

Part ParsePart(const Statement& statement, bool isJoint)
{
    WordReader words(statement);
    words.Accept(isJoint ? "joint" : "part");
    Part part;
    part.line = statement.line;
    part.isJoint = isJoint;
    part.name = words.Name("the name of the part");
    while (!words.AtEnd()) {
        if (words.Accept("on")) {
            part.hangsOn = words.Name("the part that it hangs on");
        } else if (words.Accept("pivot")) {
            part.pivot = words.Pair("the pivot");
            part.pivotGiven = true;
        } else if (words.Accept("hidden")) {
            part.shown = false;
        } else if (!isJoint && words.Accept("variants")) {
            while (!words.AtEnd())
                part.variants.push_back(words.Name("a variant"));
        } else {
            words.Finish();
        }
    }
    return part;
}

// Whether one comes back to where one started by going from part to part.
bool HangsOnItself(const std::vector<Part>& parts, int part)
{
    std::size_t steps = 0;
    for (int i = part; i >= 0; i = parts[static_cast<std::size_t>(i)].parent) {
        if (++steps > parts.size())
            return true;
    }
    return false;
}

Point ScaleOf(WordReader& words)
{
    const std::string text = words.Any("a scale");
    Statement single{words.Line(), {{text, false}}, false, {}};
    WordReader again(single);
    if (text.find(',') != std::string::npos)
        return again.Pair("a scale");
    const double both = again.Number("a scale");
    return {both, both};
}

std::string DrawnElement(WordReader& words, const Part& part)
{
    const std::string id = words.Name("what is drawn");
    const bool known = id == part.name || std::count(part.variants.begin(), part.variants.end(), id) > 0;
    if (part.isJoint || !known)
        words.Fail("'" + id + "' is no variant of '" + part.name + "'");
    return id;
}

Placement PlacementOf(WordReader& words, const std::vector<Part>& parts, int part, Placement::Side side)
{
    const int other = FindPart(words, parts);
    if (other == part)
        words.Fail("a part cannot be painted next to itself");
    return {side, other};
}

PartSettings ParseSettings(WordReader& words, const std::vector<Part>& parts, int index)
{
    const Part& part = parts[static_cast<std::size_t>(index)];
    PartSettings settings;
    if (words.AtEnd())
        words.Fail("what '" + part.name + "' does is missing");
    while (!words.AtEnd()) {
        if (words.Accept("rotate"))
            settings.rotate = words.Number("an angle");
        else if (words.Accept("move"))
            settings.move = words.Pair("a shift");
        else if (words.Accept("scale"))
            settings.scale = ScaleOf(words);
        else if (words.Accept("opacity"))
            settings.opacity = std::clamp(words.Number("the opacity"), 0.0, 1.0);
        else if (words.Accept("draw"))
            settings.draw = DrawnElement(words, part);
        else if (words.Accept("show"))
            settings.shown = true;
        else if (words.Accept("hide"))
            settings.shown = false;
        else if (words.Accept("above"))
            settings.placement = PlacementOf(words, parts, index, Placement::Side::Above);
        else if (words.Accept("below"))
            settings.placement = PlacementOf(words, parts, index, Placement::Side::Below);
        else
            words.Finish();
    }
    return settings;
}

void ParsePartLine(const Statement& line, WordReader& words, const std::vector<Part>& parts,
                   PoseSettings& pose)
{
    if (line.hasBlock)
        throw SourceError(line.line, "no block belongs here");
    const int part = FindPart(words, parts);
    pose.parts[part].Override(ParseSettings(words, parts, part));
}

} // namespace

std::vector<Part> ParseParts(const std::vector<Statement>& statements)
{
    std::vector<Part> parts;
    for (const Statement& statement : statements) {
        const std::string& kind = statement.words.front().text;
        if (kind != "part" && kind != "joint")
            continue;
        Part part = ParsePart(statement, kind == "joint");
        if (IndexOf(parts, part.name) >= 0)
            throw SourceError(statement.line, "there is a part '" + part.name + "' already");
        parts.push_back(std::move(part));
    }
    for (Part& part : parts) {
        if (part.hangsOn.empty())
            continue;
        part.parent = IndexOf(parts, part.hangsOn);
        if (part.parent < 0)
            throw SourceError(part.line, "no part is called '" + part.hangsOn + "'");
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (HangsOnItself(parts, static_cast<int>(i)))
            throw SourceError(parts[i].line, "'" + parts[i].name + "' hangs on itself in the end");
    }
    return parts;
}

void ParsePose(const Statement& statement, const std::vector<Part>& parts, PoseTable& poses)
{
    WordReader words(statement);
    words.Accept("pose");
    const std::string name = words.Name("the name of the pose");
    if (poses.contains(name))
        words.Fail("there is a pose '" + name + "' already");
    PoseSettings pose;
    if (words.Accept("from")) {
        pose = FindPose(words, poses);
        while (words.Accept("+"))
            pose.Override(FindPose(words, poses));
    }
    if (words.Accept("empty"))
        pose.startsEmpty = true;
    words.Finish();
    if (!statement.hasBlock)
        words.Fail("the pose '" + name + "' has no { block }");
    for (const Statement& line : statement.block) {
        WordReader lineWords(line);
        ParsePartLine(line, lineWords, parts, pose);
    }
    poses.emplace(name, std::move(pose));
}

MouthSet ParseMouthSet(const Statement& statement, const std::vector<Part>& parts)
{
    WordReader words(statement);
    words.Accept("mouths");
    MouthSet set;
    set.name = words.Name("the name of the mouth set");
    words.Finish();
    std::array<bool, kMouthNames.size()> given{};
    for (const Statement& line : statement.block) {
        WordReader lineWords(line);
        const std::string mouth = lineWords.Name("a mouth");
        const auto found = std::find(kMouthNames.begin(), kMouthNames.end(), mouth);
        if (found == kMouthNames.end())
            lineWords.Fail("'" + mouth +
                           "' is no mouth; they are closed, slight, partly, open, fully, medium, narrow");
        const auto index = static_cast<std::size_t>(found - kMouthNames.begin());
        given[index] = true;
        ParsePartLine(line, lineWords, parts, set.mouths[index]);
    }
    for (std::size_t i = 0; i < given.size(); ++i) {
        if (!given[i])
            words.Fail("the mouth '" + std::string(kMouthNames[i]) + "' is missing in '" + set.name + "'");
    }
    return set;
}

const PoseSettings& FindPose(WordReader& words, const PoseTable& poses)
{
    const std::string name = words.Name("a pose");
    const auto found = poses.find(name);
    if (found == poses.end())
        words.Fail("no pose is called '" + name + "'");
    return found->second;
}

int FindPart(WordReader& words, const std::vector<Part>& parts)
{
    const std::string name = words.Name("a part");
    const int index = IndexOf(parts, name);
    if (index < 0)
        words.Fail("no part is called '" + name + "'");
    return index;
}

} // namespace voxtrel::acsc
