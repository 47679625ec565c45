#include "speech/pronunciation_list.h"

#include "settings/setting_keys.h"

namespace voxtrel::speech {

using settings::kPronunciationSection;

const PronunciationTable& PronunciationList::Table() const
{
    const std::uint64_t now = store_.Generation();
    if (!table_ || now != generation_) {
        table_ = std::make_unique<PronunciationTable>(store_.GetAllSettings(kPronunciationSection));
        generation_ = now;
    }
    return *table_;
}

std::wstring PronunciationList::Find(std::wstring_view token) const
{
    const std::wstring* const spoken = Table().Find(token);
    return spoken != nullptr ? *spoken : std::wstring();
}

void PronunciationList::Save(std::wstring_view written, std::wstring_view spoken)
{
    store_.SaveSetting(kPronunciationSection, written, spoken);
}

void PronunciationList::Delete(std::wstring_view written)
{
    store_.DeleteSetting(kPronunciationSection, written);
}

std::vector<std::wstring> PronunciationList::Written() const
{
    std::vector<std::wstring> names;
    for (auto& pair : store_.GetAllSettings(kPronunciationSection))
        names.push_back(std::move(pair.first));
    return names;
}

void PronunciationEditor::Refill()
{
    entries_ = list_.Written();
    selected_.reset();
}

void PronunciationEditor::Add()
{
    list_.Save(written, spoken);
    Refill();
}

void PronunciationEditor::Click(std::size_t entry)
{
    if (entry >= entries_.size())
        return;
    selected_ = entry;
    written = entries_[entry];
    spoken = store_.GetSetting(kPronunciationSection, written);
}

void PronunciationEditor::Delete()
{
    if (selected_)
        list_.Delete(entries_[*selected_]);
    Refill();
    New();
}

void PronunciationEditor::New()
{
    written.clear();
    spoken.clear();
}

} // namespace voxtrel::speech
