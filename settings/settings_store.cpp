#include "settings/settings_store.h"

namespace voxtrel::settings {

std::wstring SettingsStore::GetSetting(std::wstring_view section, std::wstring_view key,
                                       std::wstring_view fallback) const
{
    return GetSettingOf(application_, section, key, fallback);
}

void SettingsStore::SaveSetting(std::wstring_view section, std::wstring_view key, std::wstring_view value)
{
    backend_.Write(application_, section, key, value);
}

std::vector<std::pair<std::wstring, std::wstring>>
SettingsStore::GetAllSettings(std::wstring_view section) const
{
    return backend_.Pairs(application_, section);
}

void SettingsStore::DeleteSetting(std::wstring_view section, std::wstring_view key)
{
    backend_.DeleteKey(application_, section, key);
}

void SettingsStore::DeleteSection(std::wstring_view section)
{
    backend_.DeleteSection(application_, section);
}

std::wstring SettingsStore::GetSettingOf(std::wstring_view application, std::wstring_view section,
                                         std::wstring_view key, std::wstring_view fallback) const
{
    std::optional<std::wstring> stored = backend_.Read(application, section, key);
    return stored ? std::move(*stored) : std::wstring(fallback);
}

void SettingsStore::SaveSettingOf(std::wstring_view application, std::wstring_view section,
                                  std::wstring_view key, std::wstring_view value)
{
    backend_.Write(application, section, key, value);
}

} // namespace voxtrel::settings
