#include "agent/voices/windows/sapi_tokens.h"

#include "agent/voices/windows/sapi_headers.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <utility>

namespace voxtrel::agent::voices {

namespace {

using speech::SystemVoice;

std::wstring ValueOf(ISpDataKey& key, const wchar_t* name)
{
    SapiText text;
    return SUCCEEDED(key.GetStringValue(name, text.Receive())) ? text.Text() : std::wstring();
}

// "409" or "409;9": hexadecimal language numbers, the most fitting one first.
std::wstring LanguageTag(const std::wstring& numbers)
{
    const auto number = static_cast<LCID>(std::wcstoul(numbers.c_str(), nullptr, 16));
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> tag{};
    const bool known =
        number != 0 && LCIDToLocaleName(number, tag.data(), static_cast<int>(tag.size()), 0) != 0;
    return known ? std::wstring(tag.data()) : std::wstring();
}

// Wine leaves out what all voices of the category have in common.
std::wstring WholeId(const std::wstring& id, const std::wstring& category)
{
    return id.starts_with(L"HKEY_") ? id : category + L"\\Tokens\\" + id;
}

SystemVoice VoiceOf(ISpObjectToken& token, const std::wstring& category, const SapiShelf& shelf)
{
    SapiText text;
    if (FAILED(token.GetId(text.Receive())) || text.Text().empty())
        return {};
    const std::wstring id = WholeId(text.Text(), category);
    std::wstring name = ValueOf(token, nullptr), language, gender;
    ComPointer<ISpDataKey> attributes;
    if (SUCCEEDED(token.OpenKey(L"Attributes", attributes.Receive()))) {
        language = LanguageTag(ValueOf(*attributes.Get(), L"Language"));
        gender = ValueOf(*attributes.Get(), L"Gender");
        if (name.empty())
            name = ValueOf(*attributes.Get(), L"Name");
    }
    if (name.empty())
        name = id.substr(id.rfind(L'\\') + 1);
    return {.modeId = speech::VoiceModeId(shelf.code, id),
            .displayName = name + L", " + std::wstring(shelf.name),
            .engine = std::wstring(shelf.name),
            .language = std::move(language),
            .female = _wcsicmp(gender.c_str(), L"female") == 0,
            .key = id};
}

void AddVoicesOf(const std::wstring& category, const SapiShelf& shelf, std::vector<SystemVoice>& voices)
{
    ComPointer<ISpObjectTokenCategory> found;
    ComPointer<IEnumSpObjectTokens> tokens;
    if (FAILED(CoCreateInstance(__uuidof(SpObjectTokenCategory), nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(ISpObjectTokenCategory), found.ReceiveVoid())) ||
        FAILED(found->SetId(category.c_str(), FALSE)) ||
        FAILED(found->EnumTokens(nullptr, nullptr, tokens.Receive())))
        return;
    ULONG fetched = 0;
    for (ComPointer<ISpObjectToken> token; tokens->Next(1, token.Receive(), &fetched) == S_OK && token;) {
        SystemVoice voice = VoiceOf(*token.Get(), category, shelf);
        const bool listed = std::any_of(voices.begin(), voices.end(), [&](const SystemVoice& other) {
            return other.modeId == voice.modeId;
        });
        if (!voice.modeId.empty() && !listed)
            voices.push_back(std::move(voice));
    }
}

} // namespace

std::vector<SystemVoice> ListSapiVoices(const SapiShelf& shelf)
{
    const ComThread com;
    std::vector<SystemVoice> voices;
    for (const wchar_t* root : {L"HKEY_LOCAL_MACHINE", L"HKEY_CURRENT_USER"})
        AddVoicesOf(root + std::wstring(L"\\SOFTWARE\\") + std::wstring(shelf.folder), shelf, voices);
    return voices;
}

} // namespace voxtrel::agent::voices
