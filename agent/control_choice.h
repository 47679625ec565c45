#pragma once

#include "agent/control.h"
#include "agent/system_control.h"

#include <functional>
#include <memory>
#include <string_view>

// Which character server the program works with: its own, or the control that the system brings along.
namespace voxtrel::agent {

enum class CharacterServer {
    WhatIsThere, // the system's where it is registered and works, else our own
    Embedded,    // our own; the system's is not even looked for
    System,      // the system's or none
};

// How the controls are made; called when they are needed.
struct ControlMakers {
    std::function<std::unique_ptr<Control>()> embedded;
    std::function<bool()> systemIsRegistered;
    std::function<MadeControl()> system;
    // Told of each control that begins to be used, "embedded" or "system"; may be empty.
    std::function<void(std::string_view server)> chosen;
};

// The wanted control. With WhatIsThere a character that the system's control cannot load is loaded into our
// own, without a word; only System can fail.
MadeControl ChooseControl(CharacterServer wanted, const ControlMakers& makers);

} // namespace voxtrel::agent
