#pragma once

#include <string>

namespace voxtrel::platform {

// Leaves a process behind that hands out the text (UTF-8) until another program copies or the display goes.
// For the end of the program, on a desktop where nobody else would remember the user's text. False when it
// cannot be done.
bool LeaveClipboardKeeper(const std::string& text);

} // namespace voxtrel::platform
