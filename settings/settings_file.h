#pragma once

#include "settings/settings_tree.h"

#include <string>
#include <string_view>

namespace voxtrel::settings {

// Settings as they were read from a file. Damage tells what is wrong with the file and is empty for a sound
// one; of a damaged file nothing is taken over, for half of a user's settings is nothing the user ever chose.
struct ParsedSettings {
    SettingsTree tree;
    std::wstring damage;
};

ParsedSettings ParseSettingsFile(std::string_view bytes);

std::string SerialiseSettingsFile(const SettingsTree& tree);

} // namespace voxtrel::settings
