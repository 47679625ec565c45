#include "app/command_line.h"

#include <gtest/gtest.h>

namespace voxtrel::app {
namespace {

using Arguments = std::vector<std::wstring>;

CommandLine Parse(const Arguments& arguments)
{
    const ParsedCommandLine parsed = ParseCommandLine(arguments);
    EXPECT_EQ(parsed.error, L"");
    return parsed.commandLine;
}

TEST(ParseCommandLine, NothingStartsTheProgram) { EXPECT_EQ(Parse({}).mode, RunMode::Interactive); }

TEST(ParseCommandLine, EachRequestSelectsItsMode)
{
    struct Row {
        Arguments arguments;
        RunMode mode;
        std::wstring text;
        std::wstring file;
    };
    const Row rows[] = {
        {{L"note.txt"}, RunMode::ReadFile, L"", L"note.txt"},
        {{L"-"}, RunMode::ReadFile, L"", L"-"},
        {{L"--", L"--speak"}, RunMode::ReadFile, L"", L"--speak"},
        {{L"--speak", L"Hello there"}, RunMode::Speak, L"Hello there", L""},
        {{L"--speak=a=b"}, RunMode::Speak, L"a=b", L""},
        {{L"--read", L"--text that looks like an option"}, RunMode::Read, L"--text that looks like an option", L""},
        {{L"--options"}, RunMode::Options, L"", L""},
        {{L"--quit"}, RunMode::Quit, L"", L""},
        {{L"--execute", L""}, RunMode::Execute, L"", L""},
        {{L"--list-voices"}, RunMode::ListVoices, L"", L""},
        {{L"--list-characters"}, RunMode::ListCharacters, L"", L""},
        {{L"--version"}, RunMode::Version, L"", L""},
        {{L"--help"}, RunMode::Help, L"", L""},
        {{L"-h"}, RunMode::Help, L"", L""},
        {{L"--wav", L"o.wav", L"--speak", L"x"}, RunMode::Wav, L"x", L""},
        {{L"--speak", L"x", L"--wav", L"o.wav"}, RunMode::Wav, L"x", L""},
        {{L"--wav", L"-", L"-"}, RunMode::Wav, L"", L"-"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments.empty() ? "" : std::string(row.arguments[0].begin(), row.arguments[0].end()));
        const CommandLine line = Parse(row.arguments);
        EXPECT_EQ(line.mode, row.mode);
        EXPECT_EQ(line.text, row.text);
        EXPECT_EQ(line.file, row.file);
    }
}

TEST(ParseCommandLine, CharacterServerIsChosenBeforeAnythingIsLoaded)
{
    EXPECT_EQ(Parse({}).characterServer, agent::CharacterServer::WhatIsThere);
    EXPECT_EQ(Parse({L"--character-server", L"embedded"}).characterServer, agent::CharacterServer::Embedded);
    EXPECT_EQ(Parse({L"--speak", L"x", L"--character-server=system"}).characterServer,
              agent::CharacterServer::System);
    EXPECT_EQ(ParseCommandLine({L"--character-server", L"other"}).error,
              L"--character-server takes embedded or system, not \"other\".");
}

TEST(ParseCommandLine, AddVoicesTakesAnyNumberOfNames)
{
    EXPECT_TRUE(Parse({L"--add-voices"}).names.empty());
    const CommandLine line = Parse({L"--add-voices", L"German, eSpeak NG", L"fr"});
    EXPECT_EQ(line.mode, RunMode::AddVoices);
    EXPECT_EQ(line.names, (std::vector<std::wstring>{L"German, eSpeak NG", L"fr"}));
}

TEST(ParseCommandLine, WavTakesVoiceAndProsody)
{
    const CommandLine line = Parse({L"--wav", L"o.wav", L"--voice", L"Adult Male 2, US English", L"--pitch=200",
                                    L"--speed", L"100", L"--volume", L"0", L"in.txt"});
    EXPECT_EQ(line.wavPath, L"o.wav");
    EXPECT_EQ(line.voice, L"Adult Male 2, US English");
    EXPECT_EQ(line.pitch, 200);
    EXPECT_EQ(line.speed, 100);
    EXPECT_EQ(line.volume, 0);
    EXPECT_EQ(line.file, L"in.txt");
}

TEST(ParseCommandLine, TraceGoesWithEverything)
{
    EXPECT_EQ(Parse({L"--trace", L"t.json", L"--speak", L"x"}).traceFile, L"t.json");
    EXPECT_EQ(Parse({L"--trace", L"t.json"}).mode, RunMode::Interactive);
}

TEST(ParseCommandLine, WhatMakesNoSenseIsAnErrorThatNamesIt)
{
    struct Row {
        Arguments arguments;
        std::wstring named;
    };
    const Row rows[] = {
        {{L"--frobnicate"}, L"--frobnicate"},
        {{L"-x"}, L"-x"},
        {{L"--speak"}, L"--speak"},
        {{L"--quit=now"}, L"--quit"},
        {{L"a.txt", L"b.txt"}, L"b.txt"},
        {{L"--speak", L"x", L"a.txt"}, L"a.txt"},
        {{L"--speak", L"x", L"--quit"}, L"one thing"},
        {{L"--wav", L"o.wav"}, L"--speak"},
        {{L"--wav", L"", L"--speak", L"x"}, L"--wav"},
        {{L"--wav", L"o.wav", L"--speak", L"x", L"a.txt"}, L"not both"},
        {{L"--wav", L"o.wav", L"--pitch", L"high", L"-"}, L"high"},
        {{L"--wav", L"o.wav", L"--speed", L"-5", L"-"}, L"-5"},
        {{L"--voice", L"x"}, L"--wav"},
    };
    for (const Row& row : rows) {
        const std::wstring error = ParseCommandLine(row.arguments).error;
        EXPECT_NE(error.find(row.named), std::wstring::npos)
            << std::string(error.begin(), error.end()) << " lacks " << std::string(row.named.begin(), row.named.end());
    }
}

TEST(HelpText, NamesEveryOption)
{
    for (const wchar_t* option : {L"--speak", L"--read", L"--options", L"--quit", L"--execute", L"--wav", L"--voice",
                                  L"--pitch", L"--speed", L"--volume", L"--list-voices", L"--add-voices", L"--list-characters",
                                  L"--trace", L"--version", L"--help"})
        EXPECT_NE(HelpText().find(option), std::wstring_view::npos);
}

} // namespace
} // namespace voxtrel::app
