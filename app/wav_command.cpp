#include "app/wav_command.h"

#include "agent/speech/speech_factory.h"
#include "app/headless.h"
#include "app/headless_character.h"
#include "app/voice_commands.h"
#include "platform/console.h"
#include "platform/desktop.h"
#include "platform/messages.h"
#include "platform/no_accessibility.h"
#include "platform/settings_backend.h"
#include "settings/file_path.h"
#include "settings/program_folder.h"
#include "settings/setting_keys.h"
#include "settings/settings_store.h"
#include "settings/voice_table.h"
#include "speech/character_settings.h"
#include "speech/pronunciation_list.h"
#include "speech/speech_markup.h"

#include <algorithm>
#include <fstream>
#include <limits>

namespace voxtrel::app {
namespace {

constexpr std::size_t kLongText = 2000; // characters, from which on progress is shown

class ConsoleMessages final : public platform::Messages {
public:
    void ShowExclamation(std::wstring_view text) override { Write(text); }
    void ShowInformation(std::wstring_view text) override { Write(text); }

private:
    static void Write(std::wstring_view text) { platform::WriteError(std::wstring(text) + L"\n"); }
};

class NoDesktop final : public platform::Desktop {
public:
    void ShowWindow(platform::NativeWindow, int) override {}
    void SetWindowPos(platform::NativeWindow, platform::NativeWindow, int, int, int, int, unsigned) override {}
    int ScreenWidth() const override { return 0; }
    int ScreenHeight() const override { return 0; }
};

// The user's settings and what the command line says over them.
class WavSettings {
public:
    explicit WavSettings(const std::wstring& programFolder)
        : backend_(platform::MakeSettingsBackend()), store_(*backend_), folder_(programFolder)
    {
        store_.SetApplicationName(settings::kApplicationName);
        settings::SeedVoiceTable(store_);
        shared_.character = &character_;
        speech::LoadSettings({store_, shared_, desktop_, access_, messages_, folder_});
    }

    // False, with a message, when there is no such voice.
    bool Apply(const CommandLine& line)
    {
        shared_.Pitch = Clamp<std::int16_t>(line.pitch, shared_.Pitch);
        shared_.Speed = Clamp<std::int16_t>(line.speed, shared_.Speed);
        shared_.Volume = Clamp<std::int32_t>(line.volume, shared_.Volume);
        if (!line.voice)
            return true;
        const std::wstring mode = store_.GetSetting(settings::kVoicesSection, *line.voice);
        if (mode.empty()) {
            platform::WriteError(L"There is no voice \"" + *line.voice + L"\"; --list-voices names them.\n");
            return false;
        }
        agent::Ignore(character_.SetTTSModeID(mode));
        return true;
    }

    std::wstring Markup(std::wstring text)
    {
        const speech::PronunciationList pronunciations(store_);
        speech::BuildSpeechText(text, shared_, pronunciations);
        return std::move(shared_.PendingSpeech);
    }

    std::wstring Mode() const { return character_.TTSModeID(); }

private:
    template <typename Number> static Number Clamp(std::optional<int> given, Number otherwise)
    {
        return given ? static_cast<Number>(std::min<int>(*given, std::numeric_limits<Number>::max())) : otherwise;
    }

    std::unique_ptr<settings::SettingsBackend> backend_;
    settings::SettingsStore store_;
    settings::SharedSettings shared_;
    settings::ProgramFolder folder_;
    HeadlessCharacter character_;
    NoDesktop desktop_;
    platform::NoAccessibility access_;
    ConsoleMessages messages_;
};

// Tells how far a long text is, in one line that is written over and over.
class Progress {
public:
    explicit Progress(bool shown) : shown_(shown) {}

    bool operator()(double done)
    {
        const int percent = static_cast<int>(done * 100);
        if (shown_ && percent != percent_)
            platform::WriteError(L"\r" + std::to_wstring(percent) + L" %");
        percent_ = percent;
        return true;
    }

    void End() const
    {
        if (shown_)
            platform::WriteError(L"\r100 %\n");
    }

private:
    bool shown_;
    int percent_ = -1;
};

int Render(const std::wstring& markup, const std::wstring& mode, const std::wstring& wavPath, bool isLong)
{
    std::ofstream file;
    const bool toOutput = wavPath == L"-";
    if (!toOutput) {
        file.open(settings::ToPath(wavPath), std::ios::binary | std::ios::trunc);
        if (!file) {
            platform::WriteError(L"The sound file \"" + wavPath + L"\" cannot be written.\n");
            return kExitFailure;
        }
    }
    Progress progress(isLong);
    const agent::Result rendered = agent::speech::RenderToWav(
        markup, mode, toOutput ? platform::BinaryOutput() : file, [&progress](double done) { return progress(done); },
        {}, MakeSystemVoices().get());
    if (!rendered.Ok()) {
        platform::WriteError(L"\"" + wavPath + L"\": " + rendered.description + L"\n");
        return kExitFailure;
    }
    progress.End();
    return 0;
}

} // namespace

int WriteWav(const CommandLine& commandLine, const std::wstring& programFolder)
{
    std::wstring text = commandLine.text;
    if (!commandLine.file.empty() && !LoadRequestedText(commandLine, text))
        return kExitUsage;
    WavSettings settings(programFolder);
    if (!settings.Apply(commandLine))
        return kExitUsage;
    const bool isLong = text.size() >= kLongText;
    return Render(settings.Markup(std::move(text)), settings.Mode(), commandLine.wavPath, isLong);
}

} // namespace voxtrel::app
