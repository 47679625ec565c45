#pragma once

namespace voxtrel::platform {

// Keeps what the system's sound libraries say about absent devices and servers off standard error: a missing sound
// device is no error here. Lasts until the program ends.
void SilenceSoundDrivers();

} // namespace voxtrel::platform
