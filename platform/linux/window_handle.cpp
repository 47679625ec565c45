#include "platform/window_handle.h"

#include <gdk/gdkx.h>
#include <gtk/gtk.h>
#include <wx/window.h>

namespace voxtrel::platform {

NativeWindow WindowHandle(const wxWindow& window)
{
    GtkWidget* widget = window.GetHandle();
    if (!widget)
        return 0;
    gtk_widget_realize(widget);
    GdkWindow* native = gtk_widget_get_window(widget);
    return native && GDK_IS_X11_WINDOW(native) ? GDK_WINDOW_XID(native) : 0;
}

} // namespace voxtrel::platform
