#pragma once

#include <string>
#include <string_view>

// Names of characters, animations and states.
namespace voxtrel::agent::acs {

// Letters a to z become capitals, under every locale; other letters stay.
std::wstring UpperCase(std::wstring_view name);

// Equal without regard to case, in the same way under every locale.
bool SameName(std::wstring_view left, std::wstring_view right);

} // namespace voxtrel::agent::acs
