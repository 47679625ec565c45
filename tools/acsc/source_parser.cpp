#include "agent/acs/guid.h"
#include "agent/acs/unicode.h"
#include "tools/acsc/animation_parser.h"
#include "tools/acsc/character_source.h"
#include "tools/acsc/character_words.h"
#include "tools/acsc/pose_parser.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <utility>

namespace voxtrel::acsc {

namespace {

using agent::acs::BalloonInfo;
using agent::acs::LocalizedInfo;
using agent::acs::State;
using agent::acs::VoiceInfo;

constexpr int kSmallestFrame = 16, kLargestFrame = 512, kMostDetail = 4;
constexpr std::size_t kLongestName = 32, kLongestDescription = 256;
constexpr std::uint16_t kEnglish = 0x0409;

constexpr std::pair<std::string_view, std::uint16_t> kLanguages[] = {
    {"en", kEnglish}, {"de", 0x0407}, {"fr", 0x040C}, {"es", 0x0C0A}, {"it", 0x0410},
    {"nl", 0x0413},   {"pt", 0x0816}, {"da", 0x0406}, {"sv", 0x041D}, {"fi", 0x040B},
    {"no", 0x0414},   {"pl", 0x0415}, {"cs", 0x0405}, {"ru", 0x0419}, {"tr", 0x041F},
    {"el", 0x0408},   {"hu", 0x040E}, {"ja", 0x0411}, {"ko", 0x0412}, {"zh", 0x0804},
};

std::string ParseGuidWord(WordReader& words, std::string_view expected)
{
    const auto bytes = agent::acs::ParseGuid(words.Quoted(expected));
    if (!bytes)
        words.Fail(std::string(expected) + " has the form {01234567-89AB-CDEF-0123-456789ABCDEF}");
    return agent::acs::GuidText(*bytes);
}

std::uint16_t ParseLanguage(WordReader& words)
{
    const std::string name = words.Name("a language");
    for (const auto& [known, id] : kLanguages) {
        if (name == known)
            return id;
    }
    unsigned value = 0;
    const std::string_view digits =
        name.starts_with("0x") ? std::string_view(name).substr(2) : std::string_view();
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.empty() || error != std::errc{} || end != digits.data() + digits.size() || value > 0xFFFF)
        words.Fail("the language '" + name + "' is not known; use a number like 0x0409");
    return static_cast<std::uint16_t>(value);
}

std::wstring ParseText(WordReader& words, std::size_t longest)
{
    const std::wstring text = agent::acs::WideFromUtf8(words.Quoted("a text"));
    if (text.size() > longest)
        words.Fail("the text is longer than " + std::to_string(longest) + " characters");
    return text;
}

LocalizedInfo ParseLocalized(const Statement& statement)
{
    WordReader words(statement);
    words.Accept("language");
    LocalizedInfo info;
    info.language = ParseLanguage(words);
    words.Finish();
    for (const Statement& line : statement.block) {
        WordReader lineWords(line);
        if (lineWords.Accept("name"))
            info.name = ParseText(lineWords, kLongestName);
        else if (lineWords.Accept("description"))
            info.description = ParseText(lineWords, kLongestDescription);
        else if (lineWords.Accept("extra"))
            info.extraData = ParseText(lineWords, 4096);
        lineWords.Finish();
    }
    if (info.name.empty())
        words.Fail("the name in this language is missing");
    return info;
}

VoiceInfo ParseVoice(const Statement& statement)
{
    VoiceInfo voice;
    voice.speed = 150;
    voice.pitch = 0xFFFF;
    for (const Statement& line : statement.block) {
        WordReader words(line);
        if (words.Accept("engine"))
            voice.engineId = ParseGuidWord(words, "the engine identifier");
        else if (words.Accept("mode"))
            voice.modeId = ParseGuidWord(words, "the voice identifier");
        else if (words.Accept("speed"))
            voice.speed = static_cast<std::uint32_t>(words.Integer("the speed", 1, 1000));
        else if (words.Accept("pitch"))
            voice.pitch = static_cast<std::uint16_t>(words.Integer("the pitch", 1, 0xFFFE));
        words.Finish();
    }
    if (voice.engineId.empty() || voice.modeId.empty())
        throw SourceError(statement.line, "a voice needs 'engine' and 'mode'");
    return voice;
}

void ParseFont(WordReader& words, BalloonInfo& balloon)
{
    balloon.fontName = ParseText(words, 31);
    while (!words.AtEnd()) {
        if (words.Accept("height"))
            balloon.fontHeight = words.Integer("the height", -200, 200);
        else if (words.Accept("weight"))
            balloon.fontWeight = words.Integer("the weight", 1, 1000);
        else if (words.Accept("italic"))
            balloon.italic = true;
        else
            words.Finish();
    }
}

BalloonInfo ParseBalloon(const Statement& statement)
{
    BalloonInfo balloon;
    for (const Statement& line : statement.block) {
        WordReader words(line);
        if (words.Accept("lines"))
            balloon.lines = words.Integer("the number of lines", 1, 128);
        else if (words.Accept("characters"))
            balloon.charactersPerLine = words.Integer("the number of characters", 8, 255);
        else if (words.Accept("font"))
            ParseFont(words, balloon);
        else
            AcceptBalloonWord(words, balloon);
        words.Finish();
    }
    return balloon;
}

State ParseState(const Statement& statement)
{
    WordReader words(statement);
    words.Accept("state");
    State state;
    state.name = agent::acs::WideFromUtf8(words.Name("the name of the state"));
    do
        state.animations.push_back(agent::acs::WideFromUtf8(words.Name("an animation")));
    while (!words.AtEnd());
    return state;
}

class SourceParser {
public:
    CharacterSource Parse(std::string_view text)
    {
        const std::vector<Statement> statements = ParseStatements(text);
        source_.parts = ParseParts(statements);
        for (const Statement& statement : statements)
            ParseStatement(statement);
        RequireTheEssentials();
        for (Part& part : source_.parts) {
            if (!part.pivotGiven)
                part.pivot = {source_.width / 2.0, source_.height / 2.0};
        }
        return std::move(source_);
    }

private:
    void ParseStatement(const Statement& statement)
    {
        const std::string& kind = statement.words.front().text;
        if (kind == "pose")
            ParsePose(statement, source_.parts, poses_);
        else if (kind == "mouths")
            source_.mouthSets.push_back(ParseMouthSet(statement, source_.parts));
        else if (kind == "sound")
            AddSound(ParseSound(statement), statement.line);
        else if (kind == "animation")
            ParseAnimation(statement, poses_, source_);
        else if (kind == "language")
            source_.localized.push_back(ParseLocalized(statement));
        else if (kind == "voice")
            source_.voice = ParseVoice(statement);
        else if (kind == "balloon")
            source_.balloon = ParseBalloon(statement);
        else if (statement.hasBlock)
            throw SourceError(statement.line, "'" + kind + "' takes no block");
        else if (kind == "state")
            source_.states.push_back(ParseState(statement));
        else if (kind != "part" && kind != "joint")
            ParseIdentity(statement);
    }

    void AddSound(SoundSource sound, int line)
    {
        if (FindSound(source_, sound.name))
            throw SourceError(line, "there is a sound '" + sound.name + "' already");
        source_.sounds.push_back(std::move(sound));
    }

    void ParseIdentity(const Statement& statement)
    {
        WordReader words(statement);
        if (words.Accept("guid")) {
            source_.guid = ParseGuidWord(words, "the identity");
        } else if (words.Accept("size")) {
            const Point size = words.Pair("the size");
            const auto fits = [](double side) { return side >= kSmallestFrame && side <= kLargestFrame; };
            if (!fits(size.x) || !fits(size.y))
                words.Fail("the frame is 16 to 512 units wide and high");
            source_.width = static_cast<int>(size.x);
            source_.height = static_cast<int>(size.y);
        } else if (words.Accept("detail")) {
            source_.detail = words.Integer("the pixels to a unit", 1, kMostDetail);
        } else if (words.Accept("drawing")) {
            source_.drawings.push_back(words.Any("the file of the drawing"));
        } else if (words.Accept("standardset")) {
            source_.standardAnimationSet = true;
        }
        words.Finish();
    }

    void RequireTheEssentials() const
    {
        const bool english = std::any_of(source_.localized.begin(), source_.localized.end(),
                                         [](const LocalizedInfo& info) { return info.language == kEnglish; });
        const std::pair<bool, const char*> essentials[] = {
            {!source_.guid.empty(), "'guid' is missing"},
            {source_.width > 0, "'size' is missing"},
            {!source_.drawings.empty(), "'drawing' is missing"},
            {english, "'language en' is missing"},
            {!source_.parts.empty(), "there are no parts"},
            {!source_.animations.empty(), "there are no animations"},
        };
        for (const auto& [there, complaint] : essentials) {
            if (!there)
                throw SourceError(0, complaint);
        }
    }

    CharacterSource source_;
    PoseTable poses_;
};

} // namespace

const SoundSource* FindSound(const CharacterSource& source, std::string_view name)
{
    const auto found = std::find_if(source.sounds.begin(), source.sounds.end(),
                                    [&](const SoundSource& sound) { return sound.name == name; });
    return found == source.sounds.end() ? nullptr : &*found;
}

CharacterSource ParseCharacterSource(std::string_view text) { return SourceParser().Parse(text); }

} // namespace voxtrel::acsc
