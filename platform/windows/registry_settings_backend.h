#pragma once

#include "settings/settings_backend.h"

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace voxtrel::platform {

class RegistryWatch;

// Settings in the registry of the current user: a key for each application, below it one for each section,
// and in it a text value for each setting. A subkey "Order" of the section holds the place of each value,
// since the registry keeps none. Sections are held in memory until the registry changes. For one thread only.
class RegistrySettingsBackend final : public settings::SettingsBackend {
public:
    // Below HKEY_CURRENT_USER.
    explicit RegistrySettingsBackend(std::wstring_view root = L"Software\\Voxtrel Settings");
    RegistrySettingsBackend(std::wstring_view root, std::ostream& complaints);
    ~RegistrySettingsBackend() override;

    std::optional<std::wstring> Read(std::wstring_view application, std::wstring_view section,
                                     std::wstring_view key) override;
    void Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
               std::wstring_view value) override;
    std::vector<std::pair<std::wstring, std::wstring>> Pairs(std::wstring_view application,
                                                             std::wstring_view section) override;
    void DeleteKey(std::wstring_view application, std::wstring_view section, std::wstring_view key) override;
    void DeleteSection(std::wstring_view application, std::wstring_view section) override;
    std::uint64_t Generation() override;

private:
    struct Section;

    Section& Find(std::wstring_view application, std::wstring_view section);
    std::wstring PathOf(std::wstring_view application, std::wstring_view section) const;
    void Store(const std::wstring& path, Section& section, std::size_t index);
    void Refresh();
    void Complain(long error);

    std::wstring root_;
    std::ostream& complaints_;
    bool complained_ = false;
    std::unique_ptr<RegistryWatch> watch_;
    std::map<std::wstring, std::unique_ptr<Section>> sections_; // by path
    std::uint64_t generation_ = 0;
};

} // namespace voxtrel::platform
