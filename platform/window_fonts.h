#pragma once

class wxWindow;

namespace voxtrel::platform {

// Puts the fonts that were set to a window and to everything in it into effect, so that each can be measured
// in its own. Elsewise that may wait until the window is shown.
void SettleFonts(wxWindow& window);

} // namespace voxtrel::platform
