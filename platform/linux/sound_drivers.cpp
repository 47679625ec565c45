#include "platform/sound_drivers.h"

#include <alsa/asoundlib.h>
#include <jack/jack.h>

namespace voxtrel::platform {
namespace {

void IgnoreAlsa(const char*, int, const char*, int, const char*, ...) {}
void IgnoreJack(const char*) {}

} // namespace

void SilenceSoundDrivers()
{
    snd_lib_error_set_handler(&IgnoreAlsa);
    jack_set_error_function(&IgnoreJack);
    jack_set_info_function(&IgnoreJack);
}

} // namespace voxtrel::platform
