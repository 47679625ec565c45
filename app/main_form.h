#pragma once

#include "platform/desktop.h"
#include "settings/string_table.h"

#include <string_view>

namespace voxtrel::app {

// What Main needs of its own window.
class MainForm {
public:
    virtual ~MainForm() = default;

    virtual platform::NativeWindow hWnd() const = 0;
    // LocaliseForm on the window and its controls.
    virtual void LocaliseForm(const settings::StringTable& table) = 0;

    // Shows or removes the tray icon.
    virtual void SetInTray(bool shown) = 0;
    virtual void SetHelpFile(std::wstring_view path) = 0;
    virtual void Show() = 0;

    // Handles what is waiting in the event queue, once.
    virtual void DoEvents() = 0;

    // Ends the program once the event in hand is done.
    virtual void End() = 0;
};

} // namespace voxtrel::app
