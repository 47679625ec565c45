#pragma once

#include "settings/settings_store.h"

#include <array>
#include <cstdint>

namespace voxtrel::hotkeys {

inline constexpr int kHotKeyRows = 5;

// The keys that the options dialog offers: list position 0 is F2, virtual-key code 113.
inline constexpr std::int16_t kFirstListedKey = 113;
inline constexpr int kListedKeys = 9;

// Five rows, numbered 1 to 5; row 0 is never used. Lives as long as the program.
struct HotKeyTable {
    template <typename Value> using Rows = std::array<Value, kHotKeyRows + 1>;

    Rows<std::int16_t> HotKeyCode{0,   114, 115,
                                  116, 117, 118};       // virtual-key code of the key pressed with Ctrl
    Rows<std::int16_t> HotKeyEnabled{1, 1, 1, 1, 1, 1}; // 1 is on, any other value is off
    Rows<bool> HotKeyLatched{};                         // has fired and is still held
};

// Section "hotkeys": keys 1key to 5key and 1keyenabled to 5keyenabled, decimal.
void LoadHotKeys(HotKeyTable& table, const settings::SettingsStore& store);
void SaveHotKeys(const HotKeyTable& table, settings::SettingsStore& store);

// Gives the row another key and saves the table at once. False when another row, be it on or off, has the key
// already: nothing changes then.
[[nodiscard]] bool ChangeHotKey(HotKeyTable& table, int row, std::int16_t code,
                                settings::SettingsStore& store);

// The place of the row's key in the list of keys; outside 0 to kListedKeys - 1 when the list does not have
// it.
int ListPositionOf(const HotKeyTable& table, int row);

} // namespace voxtrel::hotkeys
