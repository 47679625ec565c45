#pragma once

#include "options/view/frm_options.h"
#include "platform/accessibility.h"
#include "speech/character_control.h"

#include <functional>
#include <memory>
#include <string>

namespace voxtrel::options {

// What the room works with; all of it outlives the room.
struct RoomServices {
    settings::SettingsStore& store;
    settings::SharedSettings& shared;
    const settings::StringTable& strings;
    const settings::ProgramFolder& folder;
    const platform::Desktop& desktop;
    platform::Messages& messages;
    platform::OVAccessibility& access;
    hotkeys::HotKeyTable& hotKeys;
    std::wstring iconFolder;
    std::function<std::wstring()> helpFile; // the one that start-up has set
};

// The one options dialog of the program: made when it is asked for, gone when it is closed.
class OptionsRoom {
public:
    explicit OptionsRoom(RoomServices services) : services_(std::move(services)) {}
    ~OptionsRoom() { UnloadOptions(); }
    OptionsRoom(const OptionsRoom&) = delete;
    OptionsRoom& operator=(const OptionsRoom&) = delete;

    // Shows the dialog, or brings the open one to the front. agent1 outlives the dialog.
    void ShowOptions(agent::Control& agent1);
    void UnloadOptions();

private:
    RoomServices services_;
    std::unique_ptr<speech::CharacterControl> characters_;
    frmOptions* window_ = nullptr; // destroys itself
};

} // namespace voxtrel::options
