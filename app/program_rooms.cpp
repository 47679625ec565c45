#include "app/program_rooms.h"

#include "agent/control.h"
#include "hotkeys/hot_key_poll.h"
#include "speech/speech_markup.h"

#include <chrono>
#include <utility>

namespace voxtrel::app {
namespace {

// Milliseconds since the system started, as a number of 32 bits that wraps.
std::int32_t GetTickCount()
{
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::int32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
}

} // namespace

ProgramRooms::ProgramRooms(const RoomServices& services, const OnMainWindow& mainWindow)
    : services_(services), pronunciations_(services.store), ports_(platform::MakeSelectionPorts()),
      selection_({.windows = *ports_.windows,
                  .clipboard = *ports_.clipboard,
                  .keystrokes = *ports_.keystrokes,
                  .DoEvents = mainWindow.DoEvents,
                  .Speak = [this](std::wstring text) { Speak(std::move(text)); },
                  .ReadInTextReader = [this](std::wstring text) { textReader_.ReadInTextReader(text); },
                  .StopAll =
                      [this] {
                          if (services_.shared.character)
                              agent::Ignore(services_.shared.character->StopAll());
                      },
                  .TargetChanged =
                      [this](platform::NativeWindow window, std::wstring_view title) {
                          services_.trace.Write(
                              "target", {{"window", static_cast<std::int64_t>(window)}, {"title", title}});
                      }}),
      screenReader_({.store = services.store,
                     .shared = services.shared,
                     .access = services.access,
                     .GetTickCount = GetTickCount,
                     .SetLabel1 = mainWindow.SetLabel1,
                     .DoEvents = mainWindow.DoEvents,
                     .Speaking =
                         [this](std::wstring_view role, std::wstring_view text) {
                             services_.trace.Write("object", {{"role", role}, {"text", text}});
                         }}),
      textReader_({.store = services.store,
                   .shared = services.shared,
                   .strings = services.strings,
                   .folder = services.folder,
                   .desktop = services.desktop,
                   .messages = services.messages,
                   .iconFolder = services.folder.Beside(L"icons"),
                   .showOptions = [this] { ShowOptions(); },
                   .unloaded = {}}),
      options_({.store = services.store,
                .shared = services.shared,
                .strings = services.strings,
                .folder = services.folder,
                .desktop = services.desktop,
                .messages = services.messages,
                .access = services.access,
                .hotKeys = hotKeys_,
                .iconFolder = services.folder.Beside(L"icons"),
                .helpFile = mainWindow.HelpFile})
{
}

void ProgramRooms::LoadHotKeys() { hotkeys::LoadHotKeys(hotKeys_, services_.store); }

void ProgramRooms::UpdateTargetWindow() { selection_.UpdateTargetWindow(); }

void ProgramRooms::PollHotKeys()
{
    const auto before = hotKeys_.HotKeyLatched;
    hotkeys::PollHotKeys(hotKeys_, *ports_.keyboard, selection_);
    for (int row = 1; row <= hotkeys::kHotKeyRows; ++row) {
        if (before[row] != hotKeys_.HotKeyLatched[row])
            services_.trace.Write("hot-key",
                                  {{"number", std::int64_t{row}}, {"down", hotKeys_.HotKeyLatched[row]}});
    }
}

void ProgramRooms::SpeakSelected() { selection_.SpeakSelected(); }

void ProgramRooms::ReadSelected() { selection_.ReadSelected(); }

void ProgramRooms::ReadScreen()
{
    services_.access.Poll();
    screenReader_.Timer2_Timer();
}

void ProgramRooms::ShowOptions()
{
    if (agent1_ != nullptr)
        options_.ShowOptions(*agent1_);
}

void ProgramRooms::UnloadOptions() { options_.UnloadOptions(); }

bool ProgramRooms::ReadInTextReader(const std::wstring& text)
{
    textReader_.ReadInTextReader(text);
    return true;
}

void ProgramRooms::OpenInTextReader() { textReader_.OpenInTextReader(); }

void ProgramRooms::UnloadTextReader() { textReader_.UnloadTextReader(); }

bool ProgramRooms::closeTheWindow() const { return textReader_.closeTheWindow(); }

void ProgramRooms::TextReaderBookmark(std::int32_t number) { textReader_.TextReaderBookmark(number); }

void ProgramRooms::Speak(std::wstring text)
{
    speech::BuildSpeechText(text, services_.shared, pronunciations_);
}

} // namespace voxtrel::app
