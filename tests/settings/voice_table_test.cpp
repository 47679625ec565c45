#include "settings/voice_table.h"

#include "settings/memory_backend.h"

#include <gtest/gtest.h>

namespace voxtrel::settings {
namespace {

class VoiceTable : public testing::Test {
protected:
    VoiceTable() { store.SetApplicationName(L"Orvella"); }

    MemoryBackend backend;
    SettingsStore store{backend};
};

TEST_F(VoiceTable, SeedsEightVoicesInOrder)
{
    SeedVoiceTable(store);
    const auto voices = store.GetAllSettings(L"voices");
    ASSERT_EQ(voices.size(), 8u);
    for (int i = 0; i < 8; ++i) {
        const std::wstring name =
            i < 6 ? L"Adult Male " + std::to_wstring(i + 1) : L"Adult Female " + std::to_wstring(i - 5);
        EXPECT_EQ(voices[i].first, name + L", US English");
        EXPECT_EQ(voices[i].second, L"{CA141FD0-AC7F-11D1-97A3-00600827300" + std::to_wstring(i) + L"}");
    }
}

TEST_F(VoiceTable, LeavesTheUsersVoicesAlone)
{
    store.SaveSetting(L"VOICES", L"my own", L"");
    SeedVoiceTable(store);
    EXPECT_EQ(store.GetAllSettings(L"voices").size(), 1u);
}

TEST_F(VoiceTable, SeedsOnce)
{
    SeedVoiceTable(store);
    store.DeleteSetting(L"voices", L"Adult Male 1, US English");
    SeedVoiceTable(store);
    EXPECT_EQ(store.GetAllSettings(L"voices").size(), 7u);
}

} // namespace
} // namespace voxtrel::settings
