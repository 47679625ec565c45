#pragma once

#include "platform/windows/windows_headers.h"

#include <initializer_list>

// The user's hands on the keyboard. What they do may arrive a moment later.
namespace voxtrel::platform::fingers {

// Keys by their virtual-key codes: Ctrl and Shift of either side, F3.
void Press(std::initializer_list<WORD> keys);
void LetGo(std::initializer_list<WORD> keys);

} // namespace voxtrel::platform::fingers
