#include "platform/settings_backend.h"

#include "platform/windows/registry_settings_backend.h"

namespace voxtrel::platform {

std::unique_ptr<settings::SettingsBackend> MakeSettingsBackend()
{
    return std::make_unique<RegistrySettingsBackend>();
}

} // namespace voxtrel::platform
