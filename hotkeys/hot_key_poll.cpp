#include "hotkeys/hot_key_poll.h"

namespace voxtrel::hotkeys {
namespace {

constexpr std::int16_t kOn = 1;

// Alt and Shift are neither required nor excluded.
bool BothDown(platform::Keyboard& keyboard, int key)
{
    return keyboard.GetAsyncKeyState(key) < 0 && keyboard.GetAsyncKeyState(platform::kVirtualKeyControl) < 0;
}

bool CopiesSelection(int row) { return row == 1 || row == 2; }

} // namespace

void PollHotKeys(HotKeyTable& table, platform::Keyboard& keyboard, HotKeyActions& actions)
{
    actions.UpdateTargetWindow();
    for (int row = 1; row <= kHotKeyRows; ++row) {
        // Only 1 means on: a stored -1 leaves the row off, though -1 is true everywhere else.
        if (table.HotKeyEnabled[row] != kOn)
            continue;
        if (!BothDown(keyboard, table.HotKeyCode[row])) {
            table.HotKeyLatched[row] = false;
            continue;
        }
        if (table.HotKeyLatched[row])
            continue;
        if (CopiesSelection(row) && actions.SelectionRequestInProgress())
            continue;
        table.HotKeyLatched[row] = true;
        actions.RunHotKey(row);
        if (CopiesSelection(row))
            return;
    }
}

} // namespace voxtrel::hotkeys
