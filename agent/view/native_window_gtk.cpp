#include "agent/view/native_window.h"

#include <gtk/gtk.h>

namespace voxtrel::agent::view {

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

double FontScale()
{
    const double dotsPerInch = gdk_screen_get_resolution(gdk_screen_get_default());
    return dotsPerInch > 0 ? dotsPerInch / 96 : 1;
}

double TextBitmapScale() { return 1; }

} // namespace voxtrel::agent::view
