#pragma once

#include "settings/settings_store.h"
#include "speech/pronunciation_table.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::speech {

// The user's pronunciations: section "modify" of the settings, written word or character to spoken form. The
// settings are the only place where they are kept; what is held here is read anew whenever the settings
// change.
class PronunciationList {
public:
    explicit PronunciationList(settings::SettingsStore& store) : store_(store) {}

    // The list as it is now, for looking up many tokens; valid until the next call.
    const PronunciationTable& Table() const;

    // Empty when the token has no pronunciation.
    std::wstring Find(std::wstring_view token) const;

    void Save(std::wstring_view written, std::wstring_view spoken);
    void Delete(std::wstring_view written);

    // The written forms, in the order of the settings.
    std::vector<std::wstring> Written() const;

private:
    settings::SettingsStore& store_;
    mutable std::unique_ptr<PronunciationTable> table_;
    mutable std::uint64_t generation_ = 0; // of the settings that table_ was read from
};

// The page of the options that edits the list: two text boxes, a list box, and the buttons.
class PronunciationEditor {
public:
    explicit PronunciationEditor(settings::SettingsStore& store) : store_(store), list_(store) {}

    std::wstring written; // the first text box
    std::wstring spoken;  // the second

    const std::vector<std::wstring>& Entries() const { return entries_; }
    std::optional<std::size_t> Selected() const { return selected_; }

    // Reads the list box's entries; nothing is selected afterwards.
    void Refill();

    void Add();
    void Click(std::size_t entry);
    void Delete();
    void New();

private:
    settings::SettingsStore& store_;
    PronunciationList list_;
    std::vector<std::wstring> entries_;
    std::optional<std::size_t> selected_;
};

} // namespace voxtrel::speech
