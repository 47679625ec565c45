#pragma once

#include "app/rooms.h"
#include "app/trace.h"
#include "hotkeys/hot_key_table.h"
#include "hotkeys/selection.h"
#include "options/view/options_room.h"
#include "platform/accessibility.h"
#include "platform/desktop.h"
#include "platform/messages.h"
#include "platform/selection_ports.h"
#include "screenreading/screen_reader.h"
#include "settings/program_folder.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"
#include "settings/string_table.h"
#include "speech/pronunciation_list.h"
#include "textreader/view/text_reader_room.h"

#include <functional>
#include <string>
#include <string_view>

namespace voxtrel::app {

// What the rooms share.
struct RoomServices {
    settings::SettingsStore& store;
    settings::SharedSettings& shared;
    const settings::StringTable& strings;
    const settings::ProgramFolder& folder;
    platform::Desktop& desktop;
    platform::Messages& messages;
    platform::OVAccessibility& access;
    Trace& trace;
};

// The rooms of the program as they are built.
class ProgramRooms final : public Rooms {
public:
    // What the rooms do on the main window.
    struct OnMainWindow {
        std::function<void()> DoEvents; // handles what is waiting in the event queue, once
        std::function<void(std::wstring_view)> SetLabel1;
        std::function<std::wstring()> HelpFile; // the one that start-up has set
    };

    // What is handed in outlives the rooms.
    ProgramRooms(const RoomServices& services, const OnMainWindow& mainWindow);

    platform::DesktopReach Reach() const override { return ports_.reach; }
    // The options change the character through this; until it is given there are no options to show. It outlives the
    // dialog; null takes it away.
    void SetAgent(agent::Control* agent1) { agent1_ = agent1; }

    void LoadHotKeys() override;
    void UpdateTargetWindow() override;
    void PollHotKeys() override;
    void SpeakSelected() override;
    void ReadSelected() override;
    void ReadScreen() override;
    void ShowOptions() override;
    void UnloadOptions() override;
    bool ReadInTextReader(const std::wstring& text) override;
    void OpenInTextReader() override;
    void UnloadTextReader() override;
    bool closeTheWindow() const override;
    void TextReaderBookmark(std::int32_t number) override;

private:
    void Speak(std::wstring text);

    RoomServices services_;
    speech::PronunciationList pronunciations_;
    platform::SelectionPorts ports_;
    hotkeys::HotKeyTable hotKeys_;
    hotkeys::Selection selection_;
    screenreading::ScreenReader screenReader_;
    textreader::TextReaderRoom textReader_;
    options::OptionsRoom options_;
    agent::Control* agent1_ = nullptr;
};

} // namespace voxtrel::app
