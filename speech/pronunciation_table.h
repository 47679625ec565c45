#pragma once

#include "settings/text_case.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace voxtrel::speech {

// The pronunciation list as it was at one moment, arranged so that every word of a long text can be looked
// up: a table of hashes with open addressing, and the single Latin-1 characters apart, since each separator
// is looked up too. A token matches under any capitalisation.
class PronunciationTable {
public:
    // Written form to spoken form. An empty spoken form is none.
    explicit PronunciationTable(const std::vector<std::pair<std::wstring, std::wstring>>& pairs = {});

    // Null when the token has no pronunciation. Valid as long as the table.
    const std::wstring* Find(std::wstring_view token) const;

    // The same for a token whose code points have been put through Hash in lower case, from kEmptyHash on.
    const std::wstring* Find(std::wstring_view token, std::uint64_t hash) const
    {
        for (std::size_t i = Home(hash); slots_[i].entry != 0; i = (i + 1) & mask_) {
            if (slots_[i].hash == hash && settings::SameName(entries_[slots_[i].entry - 1].first, token))
                return &entries_[slots_[i].entry - 1].second;
        }
        return nullptr;
    }

    // The same for a token of one code point below 256.
    const std::wstring* FindLatin1(unsigned char character) const { return latin1_[character]; }

    static constexpr std::uint64_t kEmptyHash = 0xCBF29CE484222325;
    static constexpr std::uint64_t Hash(std::uint64_t before, char32_t lowerCase)
    {
        return (before ^ lowerCase) * 0x9E3779B97F4A7C15;
    }

    PronunciationTable(const PronunciationTable&) = delete;
    PronunciationTable& operator=(const PronunciationTable&) = delete;

private:
    struct Slot {
        std::uint64_t hash = 0;
        std::size_t entry = 0; // index into entries_ plus 1; 0 for a free slot
    };

    // The upper bits of a product are the mixed ones.
    std::size_t Home(std::uint64_t hash) const { return static_cast<std::size_t>(hash >> 32) & mask_; }

    std::vector<std::pair<std::wstring, std::wstring>> entries_;
    std::vector<Slot> slots_;
    std::size_t mask_ = 0;
    std::array<const std::wstring*, 256> latin1_{};
};

} // namespace voxtrel::speech
