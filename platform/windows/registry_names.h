#pragma once

#include <string>
#include <string_view>

// The names of settings as names in the registry.
//
// A registry name has a limited length, a key's name holds no backslash, none holds a NUL, and all match
// without regard to case by a table of the system's that is not the settings' rule. So every character for
// which the two rules might differ is written as %XXXX, its UTF-16 number in hexadecimal; plain English and
// Western European names stay as they are, for the operator who looks them up. What remains too long is cut
// and made unique by a hash.
namespace voxtrel::platform {

// The key of an application or a section: the same for all spellings of one name.
std::wstring RegistryKeyName(std::wstring_view name);

// The value of a setting. Keeps the spelling, so that KeyOfRegistryValue gives it back. Empty when the name
// is too long for the registry.
std::wstring RegistryValueName(std::wstring_view key);

// The value of a setting whose name is too long: the same for all spellings. Its data hold the name.
std::wstring HashedRegistryValueName(std::wstring_view key);
bool IsHashedRegistryValueName(std::wstring_view valueName);

// The setting's name, also when a person made the value.
std::wstring KeyOfRegistryValue(std::wstring_view valueName);

} // namespace voxtrel::platform
