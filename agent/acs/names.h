#pragma once

#include <string>
#include <string_view>

// Names of animations and states: letters A to Z count the same in either case, under every locale.
namespace voxtrel::agent::acs {

std::wstring UpperCase(std::wstring_view name);

bool SameName(std::wstring_view left, std::wstring_view right);

} // namespace voxtrel::agent::acs
