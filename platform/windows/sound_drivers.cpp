#include "platform/sound_drivers.h"

namespace voxtrel::platform {

// The system's sound libraries say nothing on standard error.
void SilenceSoundDrivers() {}

} // namespace voxtrel::platform
