#include "app/headless.h"

#include "app/voice_commands.h"
#include "app/wav_command.h"
#include "platform/console.h"
#include "settings/program_folder.h"
#include "textreader/text_file.h"

namespace voxtrel::app {
namespace {

int ListCharacters(const std::wstring& programFolder)
{
    for (const std::wstring& name : settings::ProgramFolder(programFolder).CharacterNames())
        platform::WriteOutput(name + L"\n");
    return 0;
}

} // namespace

bool IsHeadless(RunMode mode)
{
    switch (mode) {
    case RunMode::Wav:
    case RunMode::ListVoices:
    case RunMode::AddVoices:
    case RunMode::ListCharacters:
    case RunMode::Version:
    case RunMode::Help:
        return true;
    default:
        return false;
    }
}

int RunHeadless(const CommandLine& commandLine, const std::wstring& programFolder)
{
    switch (commandLine.mode) {
    case RunMode::Wav:
        return WriteWav(commandLine, programFolder);
    case RunMode::ListVoices:
        return ListVoices();
    case RunMode::AddVoices:
        return AddVoices(commandLine);
    case RunMode::ListCharacters:
        return ListCharacters(programFolder);
    case RunMode::Version:
        platform::WriteOutput(L"Voxtrel " VOXTREL_VERSION L"\n");
        return 0;
    default:
        platform::WriteOutput(HelpText());
        return 0;
    }
}

bool LoadRequestedText(const CommandLine& commandLine, std::wstring& text)
{
    textreader::LoadedText loaded = commandLine.file == L"-" ? textreader::DecodeText(platform::ReadStandardInput())
                                                             : textreader::LoadTextFile(commandLine.file);
    if (!loaded.error.empty()) {
        platform::WriteError(loaded.error + L"\n");
        return false;
    }
    text = std::move(loaded.text);
    return true;
}

} // namespace voxtrel::app
