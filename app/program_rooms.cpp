#include "app/program_rooms.h"

#include "agent/control.h"
#include "hotkeys/hot_key_poll.h"
#include "speech/speech_markup.h"

#include <utility>

namespace voxtrel::app {

ProgramRooms::ProgramRooms(const RoomServices& services, std::function<void()> DoEvents)
    : services_(services), pronunciations_(services.store), ports_(platform::MakeSelectionPorts()),
      selection_({.windows = *ports_.windows,
                  .clipboard = *ports_.clipboard,
                  .keystrokes = *ports_.keystrokes,
                  .DoEvents = std::move(DoEvents),
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
                .helpFile = services.helpFile})
{
}

void ProgramRooms::LoadHotKeys() { hotkeys::LoadHotKeys(hotKeys_, services_.store); }

void ProgramRooms::UpdateTargetWindow() { selection_.UpdateTargetWindow(); }

void ProgramRooms::PollHotKeys() { hotkeys::PollHotKeys(hotKeys_, *ports_.keyboard, selection_); }

void ProgramRooms::SpeakSelected() { selection_.SpeakSelected(); }

void ProgramRooms::ReadSelected() { selection_.ReadSelected(); }

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
