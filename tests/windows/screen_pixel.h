#pragma once

#include <wx/colour.h>

namespace voxtrel {

// What a person sees there: whatever window it belongs to.
wxColour ScreenPixel(int x, int y);

} // namespace voxtrel
