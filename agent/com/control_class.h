#pragma once

#include "platform/windows/windows_headers.h"

#include <objbase.h>

namespace voxtrel::agent::com {

// The class of the system's character control by its name, and by its number where the name is not
// registered.
inline constexpr const wchar_t* kControlName = L"Agent.Control.2";
inline constexpr CLSID kControlClass = {
    0xD45FD31B, 0x5C6E, 0x11D1, {0x9E, 0xC1, 0x00, 0xC0, 0x4F, 0xD7, 0x08, 0x1F}};

} // namespace voxtrel::agent::com
