#include "settings/memory_backend.h"

namespace voxtrel::settings {

std::optional<std::wstring> MemoryBackend::Read(std::wstring_view application, std::wstring_view section,
                                                std::wstring_view key)
{
    const std::wstring* const value = tree_.Find(application, section, key);
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

void MemoryBackend::Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
                          std::wstring_view value)
{
    tree_.Set(application, section, key, value);
    ++generation_;
}

std::vector<std::pair<std::wstring, std::wstring>> MemoryBackend::Pairs(std::wstring_view application,
                                                                        std::wstring_view section)
{
    const SettingsTree::Section* const found = tree_.FindSection(application, section);
    return found != nullptr ? found->pairs : std::vector<SettingsTree::Pair>{};
}

void MemoryBackend::DeleteKey(std::wstring_view application, std::wstring_view section, std::wstring_view key)
{
    tree_.Remove(application, section, key);
    ++generation_;
}

void MemoryBackend::DeleteSection(std::wstring_view application, std::wstring_view section)
{
    tree_.RemoveSection(application, section);
    ++generation_;
}

} // namespace voxtrel::settings
