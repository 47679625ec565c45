#include "platform/toolkit.h"

namespace voxtrel::platform {

void ChooseToolkitBackend() {}

} // namespace voxtrel::platform
