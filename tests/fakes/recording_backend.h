#pragma once

#include "settings/memory_backend.h"

#include <string>
#include <tuple>
#include <vector>

namespace voxtrel::tests {

// Settings in memory that remember every read and write, in order.
class RecordingBackend final : public settings::SettingsBackend {
public:
    struct Access {
        std::wstring application, section, key, value; // value: of a write
        bool operator==(const Access&) const = default;
    };

    std::optional<std::wstring> Read(std::wstring_view application, std::wstring_view section,
                                     std::wstring_view key) override
    {
        reads.push_back({std::wstring(application), std::wstring(section), std::wstring(key), {}});
        return memory.Read(application, section, key);
    }
    void Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
               std::wstring_view value) override
    {
        writes.push_back(
            {std::wstring(application), std::wstring(section), std::wstring(key), std::wstring(value)});
        memory.Write(application, section, key, value);
    }
    std::vector<std::pair<std::wstring, std::wstring>> Pairs(std::wstring_view application,
                                                             std::wstring_view section) override
    {
        return memory.Pairs(application, section);
    }
    void DeleteKey(std::wstring_view application, std::wstring_view section, std::wstring_view key) override
    {
        memory.DeleteKey(application, section, key);
    }
    void DeleteSection(std::wstring_view application, std::wstring_view section) override
    {
        memory.DeleteSection(application, section);
    }
    std::uint64_t Generation() override { return memory.Generation(); }

    settings::MemoryBackend memory;
    std::vector<Access> reads;
    std::vector<Access> writes;
};

} // namespace voxtrel::tests
