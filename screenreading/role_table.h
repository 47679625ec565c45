#pragma once

#include "settings/settings_store.h"

#include <optional>
#include <string>
#include <string_view>

// The role table: for each kind of object, what of it is spoken. A key is the role as the accessibility
// control reports it; a value names what is spoken ("name,value,"), or is a word that silences the role.
namespace voxtrel::screenreading {

inline constexpr std::wstring_view kRolesSection = L"ScreenReadingRoles";

inline constexpr std::wstring_view kName = L"name";
inline constexpr std::wstring_view kRole = L"role";
inline constexpr std::wstring_view kValue = L"value";
inline constexpr std::wstring_view kSilenced = L"False"; // the role is unticked
inline constexpr std::wstring_view kNothing = L"false";  // ticked, with nothing to speak
inline constexpr std::wstring_view kUnsaid = L"True"; // no choice yet: spoken as nothing, shown as the name

// A text of the control without its closing character.
std::wstring_view WithoutClosingCharacter(std::wstring_view text);

// What to speak of an object with this role, nothing for a silenced one. A role that is new is learnt: its
// name is spoken from now on.
std::optional<std::wstring> ChoiceFor(std::wstring_view role, settings::SettingsStore& store);

// Whether a text is a number as a whole: blanks around it, a sign, a currency sign, brackets for a negative
// number, commas between the digits, one point, an exponent after E or D.
bool IsNumeric(std::wstring_view text);

} // namespace voxtrel::screenreading
