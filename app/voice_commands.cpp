#include "app/voice_commands.h"

#include "agent/speech/speech_factory.h"
#include "agent/voices/system_voices.h"
#include "app/headless.h"
#include "app/voice_choice.h"
#include "platform/console.h"
#include "platform/settings_backend.h"
#include "settings/setting_keys.h"
#include "settings/settings_store.h"
#include "settings/text_case.h"
#include "settings/voice_table.h"

#include <algorithm>
#include <optional>

namespace voxtrel::app {
namespace {

// Section "voices" and the voices that are installed.
class Voices {
public:
    Voices() : backend_(platform::MakeSettingsBackend()), store_(*backend_)
    {
        store_.SetApplicationName(settings::kApplicationName);
        settings::SeedVoiceTable(store_);
        for (const auto& voice : agent::speech::ListVoices(MakeSystemVoices().get()))
            (voice.isBuiltIn ? builtIn_ : system_)
                .push_back({voice.name, voice.engine, voice.language, voice.modeId});
    }

    settings::SettingsStore& Store() { return store_; }

    // Under the names that the user has given them.
    std::vector<ListedVoice> Held() const
    {
        std::vector<ListedVoice> held;
        for (const auto& [name, modeId] : store_.GetAllSettings(settings::kVoicesSection)) {
            const ListedVoice* known = ById(modeId);
            held.push_back(
                {name, known ? known->engine : L"not installed", known ? known->language : L"", modeId});
        }
        return held;
    }

    std::vector<ListedVoice> ToAdd() const { return VoicesToAdd(store_, system_); }
    const std::vector<ListedVoice>& OfSystem() const { return system_; }

private:
    const ListedVoice* ById(std::wstring_view modeId) const
    {
        for (const auto* voices : {&builtIn_, &system_}) {
            const auto found =
                std::find_if(voices->begin(), voices->end(), [modeId](const ListedVoice& voice) {
                    return settings::SameName(voice.modeId, modeId);
                });
            if (found != voices->end())
                return &*found;
        }
        return nullptr;
    }

    std::unique_ptr<settings::SettingsBackend> backend_;
    settings::SettingsStore store_;
    std::vector<ListedVoice> builtIn_, system_;
};

int Add(Voices& voices, const std::vector<ListedVoice>& chosen)
{
    const settings::SettingsChanges together(voices.Store());
    int code = 0;
    for (const ListedVoice& voice : chosen) {
        const bool isNew = !VoicesToAdd(voices.Store(), {voice}).empty();
        if (!isNew) {
            platform::WriteOutput(L"\"" + voice.name + L"\" is in the list already.\n");
        } else if (AddVoice(voices.Store(), voice)) {
            platform::WriteOutput(L"Added \"" + voice.name + L"\".\n");
        } else {
            platform::WriteError(L"\"" + voice.name +
                                 L"\" is the name of another voice in your list, which stays.\n");
            code = kExitFailure;
        }
    }
    return code;
}

int AddNamed(Voices& voices, const std::vector<std::wstring>& names)
{
    std::vector<ListedVoice> chosen;
    for (const std::wstring& name : names) {
        const std::vector<ListedVoice> meant = VoicesMeantBy(name, voices.OfSystem());
        if (meant.empty()) {
            platform::WriteError(L"There is no voice \"" + name + L"\"; --list-voices names them.\n");
            return kExitUsage;
        }
        chosen.insert(chosen.end(), meant.begin(), meant.end());
    }
    return Add(voices, chosen);
}

std::wstring Numbered(const std::vector<ListedVoice>& voices)
{
    const std::size_t width = std::to_wstring(voices.size()).size();
    std::wstring list;
    std::size_t number = 0;
    for (const ListedVoice& voice : voices) {
        const std::wstring digits = std::to_wstring(++number);
        list += std::wstring(width - digits.size(), L' ') + digits + L"  " + voice.name;
        list += voice.language.empty() ? L"\n" : L" (" + voice.language + L")\n";
    }
    return list;
}

int AskAndAdd(Voices& voices)
{
    const std::vector<ListedVoice> offered = voices.ToAdd();
    if (offered.empty()) {
        platform::WriteOutput(L"There are no voices on this system that are not in the list already.\n");
        return 0;
    }
    platform::WriteOutput(Numbered(offered));
    while (const std::optional<std::wstring> answer = platform::AskAtTerminal(
               L"Which ones? Numbers (3, 7-9), names, languages, or all; nothing for none: ")) {
        std::vector<ListedVoice> chosen;
        std::wstring problem;
        if (ChooseVoices(*answer, offered, chosen, problem))
            return Add(voices, chosen);
        platform::WriteError(L"None of them is \"" + problem + L"\".\n");
    }
    platform::WriteOutput(
        L"\nTo add some of them: voxtrel --add-voices NAME..., to add all: voxtrel --add-voices all\n");
    return 0;
}

} // namespace

std::shared_ptr<agent::speech::VoiceCatalogue> MakeSystemVoices()
{
    return std::make_shared<agent::speech::VoiceCatalogue>(agent::voices::SystemVoiceFamilies());
}

int ListVoices()
{
    const Voices voices;
    platform::WriteOutput(VoiceTableText(voices.Held()));
    const std::vector<ListedVoice> more = voices.ToAdd();
    if (!more.empty())
        platform::WriteOutput(
            L"\nNot in the list of the options yet; voxtrel --add-voices puts them there:\n\n" +
            VoiceTableText(more));
    return 0;
}

int AddVoices(const CommandLine& commandLine)
{
    Voices voices;
    return commandLine.names.empty() ? AskAndAdd(voices) : AddNamed(voices, commandLine.names);
}

} // namespace voxtrel::app
