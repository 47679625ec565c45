#include "hotkeys/hot_key_table.h"

#include "settings/memory_backend.h"

#include <gtest/gtest.h>

namespace voxtrel::hotkeys {
namespace {

class HotKeyTableTest : public ::testing::Test {
protected:
    HotKeyTableTest() { store.SetApplicationName(L"Orvella"); }

    std::wstring Stored(std::wstring_view key) { return store.GetSetting(L"hotkeys", key, L"(none)"); }

    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    HotKeyTable table;
};

using LoadHotKeys = HotKeyTableTest;
using SaveHotKeys = HotKeyTableTest;
using ChangeHotKey = HotKeyTableTest;

TEST_F(LoadHotKeys, WithoutAStoredTableTheKeysAreF3ToF7AllOn)
{
    table.HotKeyCode = {};
    table.HotKeyEnabled = {};
    hotkeys::LoadHotKeys(table, store);
    for (int row = 1; row <= kHotKeyRows; ++row) {
        SCOPED_TRACE(row);
        EXPECT_EQ(table.HotKeyCode[row], 113 + row);
        EXPECT_EQ(table.HotKeyEnabled[row], 1);
        EXPECT_FALSE(table.HotKeyLatched[row]);
    }
}

TEST_F(LoadHotKeys, ReadsEachRowUnderItsOwnNumber)
{
    store.SaveSetting(L"hotkeys", L"2key", L"121");
    store.SaveSetting(L"hotkeys", L"2keyenabled", L"0");
    store.SaveSetting(L"hotkeys", L"5keyenabled", L"-1");
    hotkeys::LoadHotKeys(table, store);
    EXPECT_EQ(table.HotKeyCode, (HotKeyTable::Rows<std::int16_t>{0, 114, 121, 116, 117, 118}));
    EXPECT_EQ(table.HotKeyEnabled, (HotKeyTable::Rows<std::int16_t>{1, 1, 0, 1, 1, -1}));
}

TEST_F(LoadHotKeys, TakesWhateverIsStoredAsA16BitNumber)
{
    store.SaveSetting(L"hotkeys", L"1key", L"");
    store.SaveSetting(L"hotkeys", L"2key", L"F9");
    store.SaveSetting(L"hotkeys", L"3key", L"99999");
    store.SaveSetting(L"hotkeys", L"4key", L" 120 of them");
    store.SaveSetting(L"hotkeys", L"5key", L"-99999");
    hotkeys::LoadHotKeys(table, store);
    EXPECT_EQ(table.HotKeyCode, (HotKeyTable::Rows<std::int16_t>{0, 0, 0, 32767, 120, -32768}));
}

TEST_F(SaveHotKeys, WritesKeyAndSwitchOfEachRowAsDecimalText)
{
    table.HotKeyCode[3] = 121;
    table.HotKeyEnabled[4] = 0;
    hotkeys::SaveHotKeys(table, store);
    const std::vector<std::pair<std::wstring, std::wstring>> expected = {
        {L"1key", L"114"}, {L"1keyenabled", L"1"}, {L"2key", L"115"}, {L"2keyenabled", L"1"},
        {L"3key", L"121"}, {L"3keyenabled", L"1"}, {L"4key", L"117"}, {L"4keyenabled", L"0"},
        {L"5key", L"118"}, {L"5keyenabled", L"1"},
    };
    EXPECT_EQ(store.GetAllSettings(L"hotkeys"), expected);
}

TEST_F(SaveHotKeys, WhatWasSavedIsReadBack)
{
    table.HotKeyCode = {0, 121, 120, 119, 118, 117};
    table.HotKeyEnabled = {1, 0, 1, 0, -1, 1};
    hotkeys::SaveHotKeys(table, store);
    HotKeyTable loaded;
    hotkeys::LoadHotKeys(loaded, store);
    EXPECT_EQ(loaded.HotKeyCode, table.HotKeyCode);
    EXPECT_EQ(loaded.HotKeyEnabled, table.HotKeyEnabled);
}

TEST_F(ChangeHotKey, AFreeKeyIsTakenAndSavedAtOnce)
{
    EXPECT_TRUE(hotkeys::ChangeHotKey(table, 2, 121, store));
    EXPECT_EQ(table.HotKeyCode[2], 121);
    EXPECT_EQ(Stored(L"2key"), L"121");
}

TEST_F(ChangeHotKey, TheKeyOfAnotherRowIsRefusedAndNothingIsSaved)
{
    EXPECT_FALSE(hotkeys::ChangeHotKey(table, 2, table.HotKeyCode[4], store));
    EXPECT_EQ(table.HotKeyCode[2], 115);
    EXPECT_EQ(Stored(L"2key"), L"(none)");
    EXPECT_EQ(ListPositionOf(table, 2), 2);
}

TEST_F(ChangeHotKey, TheKeyOfARowThatIsOffIsRefusedToo)
{
    table.HotKeyEnabled[4] = 0;
    EXPECT_FALSE(hotkeys::ChangeHotKey(table, 2, table.HotKeyCode[4], store));
}

TEST_F(ChangeHotKey, TheRowsOwnKeyIsAccepted)
{
    EXPECT_TRUE(hotkeys::ChangeHotKey(table, 2, 115, store));
    EXPECT_EQ(Stored(L"2key"), L"115");
}

TEST_F(HotKeyTableTest, ListPositionsCountFromF2)
{
    EXPECT_EQ(ListPositionOf(table, 1), 1);
    table.HotKeyCode[1] = 113;
    EXPECT_EQ(ListPositionOf(table, 1), 0);
    table.HotKeyCode[1] = 121;
    EXPECT_EQ(ListPositionOf(table, 1), kListedKeys - 1);
}

} // namespace
} // namespace voxtrel::hotkeys
