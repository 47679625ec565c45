#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace voxtrel::settings {

// Where settings are kept: texts under an application name, a section and a key. Names match without regard
// to case, keep the spelling and place of their first writing, and may hold any character. No call throws; a
// store that cannot be reached reads as empty, and a failed write is reported on standard error once.
class SettingsBackend {
public:
    virtual ~SettingsBackend() = default;

    // Nothing when the key is missing; a stored empty text is a value.
    virtual std::optional<std::wstring> Read(std::wstring_view application, std::wstring_view section,
                                             std::wstring_view key) = 0;
    virtual void Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
                       std::wstring_view value) = 0;
    // Key and value pairs in the order of their first writing.
    virtual std::vector<std::pair<std::wstring, std::wstring>> Pairs(std::wstring_view application,
                                                                     std::wstring_view section) = 0;
    virtual void DeleteKey(std::wstring_view application, std::wstring_view section,
                           std::wstring_view key) = 0;
    virtual void DeleteSection(std::wstring_view application, std::wstring_view section) = 0;

    // Changes whenever anything stored may have changed, by this program or another, so that what was read
    // can be kept as long as this stays the same. Cheap.
    virtual std::uint64_t Generation() = 0;

    // Between the two, changes may be held back and made as one; they nest.
    virtual void BeginChanges() {}
    virtual void EndChanges() {}
};

} // namespace voxtrel::settings
