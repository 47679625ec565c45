#include "settings/voice_table.h"

#include "settings/setting_keys.h"

#include <string_view>
#include <utility>

namespace voxtrel::settings {

namespace {

constexpr std::pair<std::wstring_view, std::wstring_view> kVoices[] = {
    {L"Adult Male 1, US English", L"{CA141FD0-AC7F-11D1-97A3-006008273000}"},
    {L"Adult Male 2, US English", L"{CA141FD0-AC7F-11D1-97A3-006008273001}"},
    {L"Adult Male 3, US English", L"{CA141FD0-AC7F-11D1-97A3-006008273002}"},
    {L"Adult Male 4, US English", L"{CA141FD0-AC7F-11D1-97A3-006008273003}"},
    {L"Adult Male 5, US English", L"{CA141FD0-AC7F-11D1-97A3-006008273004}"},
    {L"Adult Male 6, US English", L"{CA141FD0-AC7F-11D1-97A3-006008273005}"},
    {L"Adult Female 1, US English", L"{CA141FD0-AC7F-11D1-97A3-006008273006}"},
    {L"Adult Female 2, US English", L"{CA141FD0-AC7F-11D1-97A3-006008273007}"},
};

} // namespace

void SeedVoiceTable(SettingsStore& store)
{
    if (!store.GetAllSettings(kVoicesSection).empty())
        return;
    const SettingsChanges together(store);
    for (const auto& [name, mode] : kVoices)
        store.SaveSetting(kVoicesSection, name, mode);
}

} // namespace voxtrel::settings
