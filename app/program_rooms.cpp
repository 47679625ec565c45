#include "app/program_rooms.h"

#include "agent/control.h"
#include "hotkeys/hot_key_poll.h"
#include "speech/speech_markup.h"

#include <utility>

namespace voxtrel::app {

ProgramRooms::ProgramRooms(settings::SettingsStore& store, settings::SharedSettings& shared, Trace& trace,
                           std::function<void()> DoEvents)
    : store_(store), shared_(shared), pronunciations_(store), ports_(platform::MakeSelectionPorts()),
      selection_({.windows = *ports_.windows,
                  .clipboard = *ports_.clipboard,
                  .keystrokes = *ports_.keystrokes,
                  .DoEvents = std::move(DoEvents),
                  .Speak = [this](std::wstring text) { Speak(std::move(text)); },
                  .ReadInTextReader =
                      [this](std::wstring text) {
                          if (!ReadInTextReader(text))
                              Speak(std::move(text));
                      },
                  .StopAll =
                      [this] {
                          if (shared_.character)
                              agent::Ignore(shared_.character->StopAll());
                      },
                  .TargetChanged =
                      [&trace](platform::NativeWindow window, std::wstring_view title) {
                          trace.Write("target", {{"window", static_cast<std::int64_t>(window)}, {"title", title}});
                      }})
{
}

void ProgramRooms::LoadHotKeys() { hotkeys::LoadHotKeys(hotKeys_, store_); }

void ProgramRooms::UpdateTargetWindow() { selection_.UpdateTargetWindow(); }

void ProgramRooms::PollHotKeys() { hotkeys::PollHotKeys(hotKeys_, *ports_.keyboard, selection_); }

void ProgramRooms::SpeakSelected() { selection_.SpeakSelected(); }

void ProgramRooms::ReadSelected() { selection_.ReadSelected(); }

void ProgramRooms::Speak(std::wstring text) { speech::BuildSpeechText(text, shared_, pronunciations_); }

} // namespace voxtrel::app
