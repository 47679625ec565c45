#include "platform/window_handle.h"

#include <wx/window.h>

namespace voxtrel::platform {

NativeWindow WindowHandle(const wxWindow& window) { return reinterpret_cast<NativeWindow>(window.GetHandle()); }

} // namespace voxtrel::platform
