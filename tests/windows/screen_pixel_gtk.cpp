#include "tests/windows/screen_pixel.h"

#include <gdk/gdk.h>

namespace voxtrel {

// The toolkit's own screen DC sees only the root window, not the windows on it.
wxColour ScreenPixel(int x, int y)
{
    GdkPixbuf* pixel = gdk_pixbuf_get_from_window(gdk_get_default_root_window(), x, y, 1, 1);
    if (pixel == nullptr)
        return {};
    const guchar* bytes = gdk_pixbuf_read_pixels(pixel);
    const wxColour colour(bytes[0], bytes[1], bytes[2]);
    g_object_unref(pixel);
    return colour;
}

} // namespace voxtrel
