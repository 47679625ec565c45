#pragma once

#include "settings/settings_backend.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace voxtrel::settings {

// The settings of one application in a backend. The application name is set once at start-up; the calls that
// take one serve the few values that are kept under another name.
class SettingsStore {
public:
    explicit SettingsStore(SettingsBackend& backend) : backend_(backend) {}

    void SetApplicationName(std::wstring_view name) { application_ = name; }

    std::wstring GetSetting(std::wstring_view section, std::wstring_view key,
                            std::wstring_view fallback = {}) const;
    void SaveSetting(std::wstring_view section, std::wstring_view key, std::wstring_view value);
    std::vector<std::pair<std::wstring, std::wstring>> GetAllSettings(std::wstring_view section) const;
    void DeleteSetting(std::wstring_view section, std::wstring_view key);
    void DeleteSection(std::wstring_view section);

    std::wstring GetSettingOf(std::wstring_view application, std::wstring_view section, std::wstring_view key,
                              std::wstring_view fallback) const;
    void SaveSettingOf(std::wstring_view application, std::wstring_view section, std::wstring_view key,
                       std::wstring_view value);

    // See SettingsBackend::Generation.
    std::uint64_t Generation() const { return backend_.Generation(); }

private:
    friend class SettingsChanges;

    SettingsBackend& backend_;
    std::wstring application_;
};

// While it lives, the changes to a store are one: a program that is killed meanwhile leaves all of them or
// none.
class SettingsChanges {
public:
    explicit SettingsChanges(SettingsStore& store) : backend_(store.backend_) { backend_.BeginChanges(); }
    ~SettingsChanges() { backend_.EndChanges(); }
    SettingsChanges(const SettingsChanges&) = delete;
    SettingsChanges& operator=(const SettingsChanges&) = delete;

private:
    SettingsBackend& backend_;
};

} // namespace voxtrel::settings
