#include "agent/view/native_window.h"

#include <X11/extensions/shape.h>
#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <wx/utils.h>

#include <vector>

namespace voxtrel::agent::view {

namespace {

// Where the window has no such outline beneath the toolkit (Wayland).
void SetOutlineInPixels(wxTopLevelWindow& window, const wxRegion& outline)
{
    const int dots = DotsToAPixel();
    wxRegion pixels;
    for (wxRegionIterator i(outline); i; ++i) {
        const wxPoint first(i.GetX() / dots, i.GetY() / dots);
        const wxPoint last((i.GetX() + i.GetW() - 1) / dots, (i.GetY() + i.GetH() - 1) / dots);
        pixels.Union(wxRect(first, last));
    }
    window.SetShape(pixels);
}

} // namespace

void KeepOutOfFocus(wxTopLevelWindow& window)
{
    GtkWidget* widget = window.GetHandle();
    auto* native = GTK_WINDOW(widget);
    gtk_window_set_accept_focus(native, FALSE);
    gtk_window_set_focus_on_map(native, FALSE);
    gtk_window_set_skip_pager_hint(native, TRUE);
    gtk_window_set_type_hint(native, GDK_WINDOW_TYPE_HINT_UTILITY);
    // The shape is kept by the system's window, which must exist before the first picture.
    gtk_widget_realize(widget);
}

// The toolkit forgets where a hidden window was moved to when the window had been moved just before it was
// hidden.
void PlaceHidden(wxTopLevelWindow& window, const wxPoint& topLeft)
{
    gdk_window_move(gtk_widget_get_window(window.GetHandle()), topLeft.x, topLeft.y);
}

// The toolkit's own function counts in the pixels of its windows, which are several dots on a screen of high
// resolution: every slope would be a stair.
void SetOutline(wxTopLevelWindow& window, const wxRegion& outline)
{
    GdkWindow* native = gtk_widget_get_window(window.GetHandle());
    if (!GDK_IS_X11_WINDOW(native)) {
        SetOutlineInPixels(window, outline);
        return;
    }
    std::vector<XRectangle> rectangles;
    for (wxRegionIterator i(outline); i; ++i)
        rectangles.push_back({static_cast<short>(i.GetX()), static_cast<short>(i.GetY()),
                              static_cast<unsigned short>(i.GetW()), static_cast<unsigned short>(i.GetH())});
    XShapeCombineRectangles(GDK_WINDOW_XDISPLAY(native), GDK_WINDOW_XID(native), ShapeBounding, 0, 0,
                            rectangles.data(), static_cast<int>(rectangles.size()), ShapeSet, Unsorted);
}

wxPoint PointerAtEvent()
{
    GdkEvent* event = gtk_get_current_event();
    double x = 0, y = 0;
    const bool known = event != nullptr && gdk_event_get_root_coords(event, &x, &y);
    if (event != nullptr)
        gdk_event_free(event);
    return known ? wxPoint(static_cast<int>(x), static_cast<int>(y)) : wxGetMousePosition();
}

int DotsToAPixel()
{
    GdkMonitor* monitor = gdk_display_get_monitor(gdk_display_get_default(), 0);
    return monitor != nullptr ? gdk_monitor_get_scale_factor(monitor) : 1;
}

double FontScale()
{
    const double dotsPerInch = gdk_screen_get_resolution(gdk_screen_get_default());
    return dotsPerInch > 0 ? dotsPerInch / 96 : 1;
}

double TextBitmapScale() { return 1; }

} // namespace voxtrel::agent::view
