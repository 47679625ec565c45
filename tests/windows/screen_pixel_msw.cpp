#include "tests/windows/screen_pixel.h"

#include <wx/dcscreen.h>

namespace voxtrel {

wxColour ScreenPixel(int x, int y)
{
    wxColour colour;
    wxScreenDC().GetPixel(x, y, &colour);
    return colour;
}

} // namespace voxtrel
