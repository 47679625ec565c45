#include "platform/toolkit.h"

#include <gdk/gdk.h>

namespace voxtrel::platform {

void ChooseToolkitBackend() { gdk_set_allowed_backends("x11,*"); }

} // namespace voxtrel::platform
