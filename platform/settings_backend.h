#pragma once

#include "settings/settings_backend.h"

#include <memory>

namespace voxtrel::platform {

// The user's settings as this platform keeps them.
std::unique_ptr<settings::SettingsBackend> MakeSettingsBackend();

} // namespace voxtrel::platform
