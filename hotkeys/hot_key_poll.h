#pragma once

#include "hotkeys/hot_key_table.h"
#include "platform/keyboard.h"

namespace voxtrel::hotkeys {

// What the rows do.
class HotKeyActions {
public:
    virtual ~HotKeyActions() = default;

    virtual void UpdateTargetWindow() = 0;

    // 1 speaks the selection, 2 reads it in the Text Reader, 3 speaks the clipboard, 4 reads it, 5 stops.
    virtual void RunHotKey(int row) = 0;

    // While a selection is being copied no other copy can begin.
    virtual bool SelectionRequestInProgress() const = 0;
};

// One look at the keyboard, on every tick of Timer1. A tick that comes while a selection request yields is a
// look like any other, but starts no selection request: the row stays unlatched and fires once the request
// has ended, if it is still held then.
void PollHotKeys(HotKeyTable& table, platform::Keyboard& keyboard, HotKeyActions& actions);

} // namespace voxtrel::hotkeys
