#include "speech/pronunciation_table.h"

#include <bit>

namespace voxtrel::speech {

namespace {

std::uint64_t HashOf(std::wstring_view token)
{
    std::uint64_t hash = PronunciationTable::kEmptyHash;
    for (std::size_t i = 0; i < token.size();) {
        const settings::CodePoint next = settings::CodePointAt(token, i);
        hash = PronunciationTable::Hash(hash, settings::SimpleLower(next.value));
        i += next.length;
    }
    return hash;
}

} // namespace

PronunciationTable::PronunciationTable(const std::vector<std::pair<std::wstring, std::wstring>>& pairs)
{
    for (const auto& pair : pairs) {
        if (!pair.second.empty())
            entries_.push_back(pair);
    }
    slots_.resize(std::bit_ceil(entries_.size() * 4 + 1));
    mask_ = slots_.size() - 1;
    for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
        const std::uint64_t hash = HashOf(entries_[entry].first);
        std::size_t i = Home(hash);
        while (slots_[i].entry != 0)
            i = (i + 1) & mask_;
        slots_[i] = {hash, entry + 1};
    }
    for (std::size_t c = 0; c < latin1_.size(); ++c)
        latin1_[c] = Find(std::wstring(1, static_cast<wchar_t>(c)));
}

const std::wstring* PronunciationTable::Find(std::wstring_view token) const
{
    return Find(token, HashOf(token));
}

} // namespace voxtrel::speech
