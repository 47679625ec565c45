#pragma once

#include "settings/text_case.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace voxtrel::settings {

// Settings in memory, by the rules of SettingsBackend: names match without regard to case and keep the
// spelling and place of their first writing. A section without keys does not exist.
class SettingsTree {
public:
    using Pair = std::pair<std::wstring, std::wstring>;

    struct Section {
        std::wstring application;
        std::wstring name;
        std::vector<Pair> pairs;
        std::unordered_map<std::wstring, std::size_t, NameHash, NameEqual> places; // of the keys in pairs
    };

    // In the order of their first writing.
    const std::vector<Section>& Sections() const { return sections_; }

    // Null when there is none. Valid until the next change.
    const Section* FindSection(std::wstring_view application, std::wstring_view section) const;
    const std::wstring* Find(std::wstring_view application, std::wstring_view section,
                             std::wstring_view key) const;

    void Set(std::wstring_view application, std::wstring_view section, std::wstring_view key,
             std::wstring_view value);
    // Whether there was something to remove.
    bool Remove(std::wstring_view application, std::wstring_view section, std::wstring_view key);
    bool RemoveSection(std::wstring_view application, std::wstring_view section);

private:
    Section* MutableSection(std::wstring_view application, std::wstring_view section);

    std::vector<Section> sections_;
};

} // namespace voxtrel::settings
