#include "settings/settings_tree.h"

#include <algorithm>

namespace voxtrel::settings {

const SettingsTree::Section* SettingsTree::FindSection(std::wstring_view application,
                                                       std::wstring_view section) const
{
    const auto found = std::find_if(sections_.begin(), sections_.end(), [&](const Section& candidate) {
        return SameName(candidate.name, section) && SameName(candidate.application, application);
    });
    return found == sections_.end() ? nullptr : &*found;
}

SettingsTree::Section* SettingsTree::MutableSection(std::wstring_view application, std::wstring_view section)
{
    return const_cast<Section*>(FindSection(application, section));
}

const std::wstring* SettingsTree::Find(std::wstring_view application, std::wstring_view section,
                                       std::wstring_view key) const
{
    const Section* const within = FindSection(application, section);
    if (within == nullptr)
        return nullptr;
    const auto place = within->places.find(key);
    return place == within->places.end() ? nullptr : &within->pairs[place->second].second;
}

void SettingsTree::Set(std::wstring_view application, std::wstring_view section, std::wstring_view key,
                       std::wstring_view value)
{
    Section* within = MutableSection(application, section);
    if (within == nullptr)
        within = &sections_.emplace_back(Section{std::wstring(application), std::wstring(section), {}, {}});
    const auto place = within->places.find(key);
    if (place != within->places.end()) {
        within->pairs[place->second].second = value;
        return;
    }
    within->places.emplace(key, within->pairs.size());
    within->pairs.emplace_back(key, value);
}

bool SettingsTree::Remove(std::wstring_view application, std::wstring_view section, std::wstring_view key)
{
    Section* const within = MutableSection(application, section);
    if (within == nullptr)
        return false;
    const auto place = within->places.find(key);
    if (place == within->places.end())
        return false;
    if (within->pairs.size() == 1)
        return RemoveSection(application, section);

    const std::size_t removed = place->second;
    within->pairs.erase(within->pairs.begin() + static_cast<std::ptrdiff_t>(removed));
    within->places.erase(place);
    for (auto& [name, index] : within->places) {
        if (index > removed)
            --index;
    }
    return true;
}

bool SettingsTree::RemoveSection(std::wstring_view application, std::wstring_view section)
{
    const Section* const within = FindSection(application, section);
    if (within == nullptr)
        return false;
    sections_.erase(sections_.begin() + (within - sections_.data()));
    return true;
}

} // namespace voxtrel::settings
