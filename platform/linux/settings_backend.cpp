#include "platform/settings_backend.h"

#include "platform/linux/file_settings_backend.h"

namespace voxtrel::platform {

std::unique_ptr<settings::SettingsBackend> MakeSettingsBackend()
{
    return std::make_unique<FileSettingsBackend>(FileSettingsBackend::DefaultFile());
}

} // namespace voxtrel::platform
