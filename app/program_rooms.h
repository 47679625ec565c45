#pragma once

#include "app/rooms.h"
#include "app/trace.h"
#include "hotkeys/hot_key_table.h"
#include "hotkeys/selection.h"
#include "platform/selection_ports.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"
#include "speech/pronunciation_list.h"

#include <functional>

namespace voxtrel::app {

// The rooms of the program as they are built.
class ProgramRooms final : public Rooms {
public:
    // What is handed in outlives the rooms. DoEvents handles what is waiting in the event queue, once.
    ProgramRooms(settings::SettingsStore& store, settings::SharedSettings& shared, Trace& trace,
                 std::function<void()> DoEvents);

    platform::DesktopReach Reach() const { return ports_.reach; }

    void LoadHotKeys() override;
    void UpdateTargetWindow() override;
    void PollHotKeys() override;
    void SpeakSelected() override;
    void ReadSelected() override;

private:
    void Speak(std::wstring text);

    settings::SettingsStore& store_;
    settings::SharedSettings& shared_;
    speech::PronunciationList pronunciations_;
    platform::SelectionPorts ports_;
    hotkeys::HotKeyTable hotKeys_;
    hotkeys::Selection selection_;
};

} // namespace voxtrel::app
