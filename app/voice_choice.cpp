#include "app/voice_choice.h"

#include "settings/setting_keys.h"
#include "settings/text_case.h"

#include <algorithm>
#include <cwchar>
#include <optional>
#include <utility>

namespace voxtrel::app {
namespace {

using settings::SameName;

constexpr std::wstring_view kBlanks = L" \t\r\n";

std::wstring_view Trimmed(std::wstring_view text)
{
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::wstring_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

// "German, eSpeak NG" is "German" without its engine.
std::wstring_view WithoutEngine(const ListedVoice& voice)
{
    const std::wstring_view name = voice.name;
    const std::wstring ending = L", " + voice.engine;
    return name.ends_with(ending) ? name.substr(0, name.size() - ending.size()) : name;
}

template <typename Matches>
std::vector<ListedVoice> Those(const std::vector<ListedVoice>& voices, Matches matches)
{
    std::vector<ListedVoice> found;
    std::copy_if(voices.begin(), voices.end(), std::back_inserter(found), matches);
    return found;
}

// The same voice is often to be had through more than one engine; the first one is the quickest.
std::vector<ListedVoice> OfOneEngine(const std::vector<ListedVoice>& voices)
{
    return Those(voices, [&](const ListedVoice& voice) { return voice.engine == voices.front().engine; });
}

std::optional<std::size_t> Number(std::wstring_view text)
{
    if (text.empty() || text.size() > 6 || text.find_first_not_of(L"0123456789") != std::wstring_view::npos)
        return std::nullopt;
    return std::wcstoul(std::wstring(text).c_str(), nullptr, 10);
}

// "3" or "7-9", counted from 1; nothing when it is neither or out of range.
std::vector<ListedVoice> VoicesByNumber(std::wstring_view part, const std::vector<ListedVoice>& voices)
{
    const std::size_t dash = part.find(L'-');
    const auto first = Number(Trimmed(part.substr(0, dash)));
    const auto last = dash == std::wstring_view::npos ? first : Number(Trimmed(part.substr(dash + 1)));
    if (!first || !last || *first < 1 || *first > *last || *last > voices.size())
        return {};
    return {voices.begin() + static_cast<std::ptrdiff_t>(*first - 1),
            voices.begin() + static_cast<std::ptrdiff_t>(*last)};
}

} // namespace

std::vector<ListedVoice> VoicesMeantBy(std::wstring_view words, const std::vector<ListedVoice>& voices)
{
    if (SameName(words, L"all"))
        return voices;
    const auto exact = Those(voices, [&](const ListedVoice& voice) {
        return SameName(voice.name, words) || SameName(voice.modeId, words);
    });
    if (!exact.empty())
        return exact;
    const auto named =
        Those(voices, [&](const ListedVoice& voice) { return SameName(WithoutEngine(voice), words); });
    if (!named.empty())
        return OfOneEngine(named);
    const auto ofLanguage =
        Those(voices, [&](const ListedVoice& voice) { return SameName(voice.language, words); });
    if (!ofLanguage.empty())
        return OfOneEngine(ofLanguage);
    return Those(voices, [&](const ListedVoice& voice) { return SameName(voice.engine, words); });
}

bool ChooseVoices(std::wstring_view answer, const std::vector<ListedVoice>& voices,
                  std::vector<ListedVoice>& chosen, std::wstring& problem)
{
    // A name may hold a comma itself.
    if (const auto whole = VoicesMeantBy(Trimmed(answer), voices); !whole.empty()) {
        chosen = whole;
        return true;
    }
    chosen.clear();
    while (!Trimmed(answer).empty()) {
        const std::size_t comma = std::min(answer.find(L','), answer.size());
        const std::wstring_view part = Trimmed(answer.substr(0, comma));
        answer.remove_prefix(std::min(comma + 1, answer.size()));
        if (part.empty())
            continue;
        std::vector<ListedVoice> meant = VoicesByNumber(part, voices);
        if (meant.empty())
            meant = VoicesMeantBy(part, voices);
        if (meant.empty()) {
            problem = part;
            return false;
        }
        for (ListedVoice& voice : meant) {
            if (std::find(chosen.begin(), chosen.end(), voice) == chosen.end())
                chosen.push_back(std::move(voice));
        }
    }
    return true;
}

std::vector<ListedVoice> VoicesToAdd(const settings::SettingsStore& store,
                                     const std::vector<ListedVoice>& voices)
{
    const auto held = store.GetAllSettings(settings::kVoicesSection);
    return Those(voices, [&held](const ListedVoice& voice) {
        return std::none_of(held.begin(), held.end(),
                            [&voice](const auto& entry) { return SameName(entry.second, voice.modeId); });
    });
}

bool AddVoice(settings::SettingsStore& store, const ListedVoice& voice)
{
    const std::wstring held = store.GetSetting(settings::kVoicesSection, voice.name);
    if (!held.empty())
        return SameName(held, voice.modeId);
    store.SaveSetting(settings::kVoicesSection, voice.name, voice.modeId);
    return true;
}

std::wstring VoiceTableText(const std::vector<ListedVoice>& voices)
{
    std::size_t nameWidth = 0, engineWidth = 0, languageWidth = 0;
    for (const ListedVoice& voice : voices) {
        nameWidth = std::max(nameWidth, voice.name.size());
        engineWidth = std::max(engineWidth, voice.engine.size());
        languageWidth = std::max(languageWidth, voice.language.size());
    }
    const auto column = [](const std::wstring& text, std::size_t width) {
        return text + std::wstring(width - text.size() + 2, L' ');
    };
    std::wstring table;
    for (const ListedVoice& voice : voices) {
        table += column(voice.name, nameWidth) + column(voice.engine, engineWidth) +
                 column(voice.language, languageWidth) + voice.modeId + L'\n';
    }
    return table;
}

} // namespace voxtrel::app
