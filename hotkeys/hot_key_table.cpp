#include "hotkeys/hot_key_table.h"

#include "settings/number_conversions.h"

#include <string>
#include <string_view>

namespace voxtrel::hotkeys {
namespace {

constexpr std::wstring_view kSection = L"hotkeys";
constexpr std::int16_t kDefaultKeyOfRow0 = 113; // row 1 is F3, and so on
constexpr std::wstring_view kOn = L"1";

std::wstring KeyName(int row) { return std::to_wstring(row) + L"key"; }
std::wstring EnabledName(int row) { return std::to_wstring(row) + L"keyenabled"; }

} // namespace

void LoadHotKeys(HotKeyTable& table, const settings::SettingsStore& store)
{
    for (int row = 1; row <= kHotKeyRows; ++row) {
        const std::wstring defaultKey = std::to_wstring(row + kDefaultKeyOfRow0);
        table.HotKeyCode[row] = settings::ToInt16(store.GetSetting(kSection, KeyName(row), defaultKey));
        table.HotKeyEnabled[row] = settings::ToInt16(store.GetSetting(kSection, EnabledName(row), kOn));
    }
}

void SaveHotKeys(const HotKeyTable& table, settings::SettingsStore& store)
{
    for (int row = 1; row <= kHotKeyRows; ++row) {
        store.SaveSetting(kSection, KeyName(row), std::to_wstring(table.HotKeyCode[row]));
        store.SaveSetting(kSection, EnabledName(row), std::to_wstring(table.HotKeyEnabled[row]));
    }
}

bool ChangeHotKey(HotKeyTable& table, int row, std::int16_t code, settings::SettingsStore& store)
{
    for (int other = 1; other <= kHotKeyRows; ++other) {
        // A row that is off keeps its key to itself too: it may be switched on again.
        if (other != row && table.HotKeyCode[other] == code)
            return false;
    }
    table.HotKeyCode[row] = code;
    SaveHotKeys(table, store);
    return true;
}

int ListPositionOf(const HotKeyTable& table, int row) { return table.HotKeyCode[row] - kFirstListedKey; }

} // namespace voxtrel::hotkeys
