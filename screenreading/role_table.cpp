#include "screenreading/role_table.h"

#include "settings/text_case.h"

#include <array>

namespace voxtrel::screenreading {
namespace {

constexpr std::wstring_view kNewRole = L"name_new";
// Place holders that programs report where they have no role.
constexpr std::array<std::wstring_view, 2> kNeverLearnt = {L".....", L"&Keyboard:"};

bool IsBlank(std::wstring_view text) { return text.find_first_not_of(L' ') == std::wstring_view::npos; }

bool IsNeverLearnt(std::wstring_view role)
{
    for (const std::wstring_view placeHolder : kNeverLearnt) {
        if (role == placeHolder)
            return true;
    }
    return IsNumeric(role);
}

} // namespace

std::wstring_view WithoutClosingCharacter(std::wstring_view text)
{
    if (text.empty())
        return text;
    const std::size_t last = text.size() - 1;
    const bool pair = last > 0 && settings::CodePointAt(text, last - 1).length == 2;
    return text.substr(0, pair ? last - 1 : last);
}

std::optional<std::wstring> ChoiceFor(std::wstring_view role, settings::SettingsStore& store)
{
    const std::wstring_view said = WithoutClosingCharacter(role);
    if (IsBlank(said))
        return std::wstring(kName);
    std::wstring choice = store.GetSetting(kRolesSection, role, kNewRole);
    if (choice == kNewRole) {
        if (!IsNeverLearnt(role) && !IsNeverLearnt(said))
            store.SaveSetting(kRolesSection, role, kName);
        return std::wstring(kName);
    }
    if (choice == kSilenced)
        return std::nullopt;
    return choice;
}

} // namespace voxtrel::screenreading
