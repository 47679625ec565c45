#include "app/command_line.h"

#include <array>
#include <cwchar>
#include <functional>

namespace voxtrel::app {
namespace {

enum class Takes { Nothing, Value };

struct Option {
    std::wstring_view name;
    Takes takes;
    // Puts the option into the command line; gives a sentence when its value makes no sense.
    std::function<std::wstring(CommandLine&, const std::wstring&)> apply;
};

std::optional<int> WholeNumber(const std::wstring& text)
{
    if (text.empty() || text.size() > 9 || text.find_first_not_of(L"0123456789") != std::wstring::npos)
        return std::nullopt;
    return static_cast<int>(std::wcstol(text.c_str(), nullptr, 10));
}

std::wstring SetMode(CommandLine& line, RunMode mode)
{
    const bool wavOfText = line.mode == RunMode::Wav && mode == RunMode::Speak;
    const bool textOfWav = line.mode == RunMode::Speak && mode == RunMode::Wav;
    if (wavOfText)
        return {};
    if (line.mode != RunMode::Interactive && !textOfWav)
        return L"Only one thing can be asked for at a time.";
    line.mode = mode;
    return {};
}

auto Mode(RunMode mode)
{
    return [mode](CommandLine& line, const std::wstring&) { return SetMode(line, mode); };
}

auto ModeWithText(RunMode mode, std::wstring CommandLine::* field)
{
    return [mode, field](CommandLine& line, const std::wstring& value) {
        line.*field = value;
        return SetMode(line, mode);
    };
}

auto Number(std::wstring_view name, std::optional<int> CommandLine::* field)
{
    return [name, field](CommandLine& line, const std::wstring& value) -> std::wstring {
        line.*field = WholeNumber(value);
        if (line.*field)
            return {};
        return std::wstring(name) + L" takes a whole number, not \"" + value + L"\".";
    };
}

std::wstring ChooseCharacterServer(CommandLine& line, const std::wstring& value)
{
    if (value != L"embedded" && value != L"system")
        return L"--character-server takes embedded or system, not \"" + value + L"\".";
    line.characterServer =
        value == L"system" ? agent::CharacterServer::System : agent::CharacterServer::Embedded;
    return {};
}

const std::array<Option, 17>& Options()
{
    static const std::array<Option, 17> options{{
        {L"--speak", Takes::Value, ModeWithText(RunMode::Speak, &CommandLine::text)},
        {L"--read", Takes::Value, ModeWithText(RunMode::Read, &CommandLine::text)},
        {L"--execute", Takes::Value, ModeWithText(RunMode::Execute, &CommandLine::text)},
        {L"--wav", Takes::Value, ModeWithText(RunMode::Wav, &CommandLine::wavPath)},
        {L"--options", Takes::Nothing, Mode(RunMode::Options)},
        {L"--quit", Takes::Nothing, Mode(RunMode::Quit)},
        {L"--list-voices", Takes::Nothing, Mode(RunMode::ListVoices)},
        {L"--add-voices", Takes::Nothing, Mode(RunMode::AddVoices)},
        {L"--list-characters", Takes::Nothing, Mode(RunMode::ListCharacters)},
        {L"--version", Takes::Nothing, Mode(RunMode::Version)},
        {L"--help", Takes::Nothing, Mode(RunMode::Help)},
        {L"--voice", Takes::Value,
         [](CommandLine& line, const std::wstring& value) {
             line.voice = value;
             return std::wstring();
         }},
        {L"--trace", Takes::Value,
         [](CommandLine& line, const std::wstring& value) {
             line.traceFile = value;
             return std::wstring();
         }},
        {L"--character-server", Takes::Value, ChooseCharacterServer},
        {L"--pitch", Takes::Value, Number(L"--pitch", &CommandLine::pitch)},
        {L"--speed", Takes::Value, Number(L"--speed", &CommandLine::speed)},
        {L"--volume", Takes::Value, Number(L"--volume", &CommandLine::volume)},
    }};
    return options;
}

const Option* FindOption(std::wstring_view name)
{
    for (const Option& option : Options()) {
        if (option.name == name)
            return &option;
    }
    return nullptr;
}

std::wstring TakeFile(CommandLine& line, const std::wstring& file)
{
    if (line.mode == RunMode::AddVoices) {
        line.names.push_back(file);
        return {};
    }
    if (!line.file.empty())
        return L"Only one file can be read at a time: \"" + line.file + L"\" or \"" + file + L"\".";
    line.file = file;
    return {};
}

// Takes the option at position i, and its value when that is the next argument; i is then moved on to it.
std::wstring TakeOption(CommandLine& line, const std::vector<std::wstring>& arguments, std::size_t& i)
{
    const std::wstring& argument = arguments[i];
    const std::size_t equals = argument.find(L'=');
    const std::wstring name = argument.substr(0, equals);
    const Option* option = FindOption(name == L"-h" ? L"--help" : name);
    if (!option)
        return L"Unknown option \"" + name + L"\".";
    const bool joined = equals != std::wstring::npos;
    if (option->takes == Takes::Nothing)
        return joined ? name + L" takes no value." : option->apply(line, {});
    if (joined)
        return option->apply(line, argument.substr(equals + 1));
    if (i + 1 == arguments.size())
        return name + L" needs a value.";
    return option->apply(line, arguments[++i]);
}

// What fits together only when all arguments are known.
std::wstring CheckWhole(CommandLine& line)
{
    if (line.mode == RunMode::Interactive && !line.file.empty())
        line.mode = RunMode::ReadFile;
    const bool wav = line.mode == RunMode::Wav;
    if (!wav && (line.voice || line.pitch || line.speed || line.volume))
        return L"--voice, --pitch, --speed and --volume go with --wav.";
    if (wav && line.wavPath.empty())
        return L"--wav takes the name of the file to write.";
    if (wav && line.file.empty() == line.text.empty())
        return line.file.empty() ? L"--wav needs something to say: --speak TEXT, a file, or - for the standard input."
                                 : L"--wav takes either --speak TEXT or a file, not both.";
    if (!wav && line.mode != RunMode::ReadFile && !line.file.empty())
        return L"A file does not go with what else was asked for: \"" + line.file + L"\".";
    return {};
}

} // namespace

ParsedCommandLine ParseCommandLine(const std::vector<std::wstring>& arguments)
{
    ParsedCommandLine parsed;
    CommandLine& line = parsed.commandLine;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size() && parsed.error.empty(); ++i) {
        const std::wstring& argument = arguments[i];
        if (optionsEnded || argument.empty() || argument[0] != L'-' || argument == L"-")
            parsed.error = TakeFile(line, argument);
        else if (argument == L"--")
            optionsEnded = true;
        else
            parsed.error = TakeOption(line, arguments, i);
    }
    if (parsed.error.empty())
        parsed.error = CheckWhole(line);
    return parsed;
}

std::wstring_view HelpText()
{
    return LR"(Voxtrel reads text aloud through an animated character.

  voxtrel                    start the program
  voxtrel FILE               read a text file (- reads the standard input)
  voxtrel --speak TEXT       speak a text
  voxtrel --read TEXT        read a text in the Text Reader
  voxtrel --options          show the options
  voxtrel --quit             end the running program
  voxtrel --execute STRING   send a raw command string to the running program

These go to the program that is already running; when none is, it is started
(--execute and --quit need a running one).

  voxtrel --wav OUT.wav [--voice NAME] [--pitch N] [--speed N] [--volume N]
          (--speak TEXT | FILE | -)
                             write the speech to a sound file, without a window
                             (OUT.wav may be - for the standard output)
  voxtrel --list-voices      the voices: those that can be chosen, and those of the
                             system that can be added
  voxtrel --add-voices [NAME...]
                             add voices of the system to those that can be chosen:
                             by name, language ("de"), engine, or all; without a
                             name they are listed and asked for
  voxtrel --list-characters  the characters that can be chosen
  voxtrel --trace FILE       write what happens to FILE, one JSON line an event
  voxtrel --character-server embedded|system
                             whose characters: Voxtrel's own, or those of the
                             character control that some Windows systems have;
                             without it, the system's where it is installed
  voxtrel --version          the version
  voxtrel --help             this text

Pitch is in hertz (50 to 400, 150 is natural), speed in words a minute (50 to
250, 150 is natural), volume 0 to 65535 (30000 is comfortable).
)";
}

} // namespace voxtrel::app
