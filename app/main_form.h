#pragma once

#include "platform/desktop.h"
#include "settings/string_table.h"

#include <string_view>

namespace voxtrel::app {

// The tray menu: its root, which is never shown itself, and its entries.
enum class MenuEntry { mnu_root, mnu_showOptions, mnu_toolbar };
inline constexpr MenuEntry kMenuEntries[] = {MenuEntry::mnu_root, MenuEntry::mnu_showOptions, MenuEntry::mnu_toolbar};

// Buttons of tbrMenu by their keys, in their order.
inline constexpr std::string_view kToolbarKeys[] = {"speakselected", "speakall", "stopspeaking", "openfile", "options"};

// What Main needs of its own window.
class MainForm {
public:
    virtual ~MainForm() = default;

    virtual platform::NativeWindow hWnd() const = 0;
    // LocaliseForm on the window and its controls.
    virtual void LocaliseForm(const settings::StringTable& table) = 0;

    virtual void SetTitle(std::wstring_view title) = 0;
    // number from 1, in the order of kToolbarKeys.
    virtual void SetButtonToolTip(std::size_t number, std::wstring_view text) = 0;
    virtual std::wstring MenuCaption(MenuEntry entry) const = 0;
    virtual void SetMenuCaption(MenuEntry entry, std::wstring_view caption) = 0;

    // Shows or removes the tray icon.
    virtual void SetInTray(bool shown) = 0;
    virtual void SetTrayTip(std::wstring_view tip) = 0;
    // Brings the window to the front and opens the menu mnu_root at the tray icon; an entry that is chosen comes back
    // as a call of its handler.
    virtual void PopupTrayMenu() = 0;

    virtual void SetHelpFile(std::wstring_view path) = 0;
    virtual bool Visible() const = 0;
    virtual void SetVisible(bool visible) = 0;

    // Handles what is waiting in the event queue, once.
    virtual void DoEvents() = 0;

    // Ends the program once the event in hand is done.
    virtual void End() = 0;
};

} // namespace voxtrel::app
