#pragma once

#include "settings/settings_backend.h"
#include "settings/settings_tree.h"

namespace voxtrel::settings {

// Settings that end with the program.
class MemoryBackend : public SettingsBackend {
public:
    std::optional<std::wstring> Read(std::wstring_view application, std::wstring_view section,
                                     std::wstring_view key) override;
    void Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
               std::wstring_view value) override;
    std::vector<std::pair<std::wstring, std::wstring>> Pairs(std::wstring_view application,
                                                             std::wstring_view section) override;
    void DeleteKey(std::wstring_view application, std::wstring_view section, std::wstring_view key) override;
    void DeleteSection(std::wstring_view application, std::wstring_view section) override;
    std::uint64_t Generation() override { return generation_; }

private:
    SettingsTree tree_;
    std::uint64_t generation_ = 0;
};

} // namespace voxtrel::settings
