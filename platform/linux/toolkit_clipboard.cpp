#include "platform/linux/toolkit_clipboard.h"

#include "settings/text_case.h"

#include <gdk/gdkx.h>
#include <gtk/gtk.h>

namespace voxtrel::platform {

std::optional<std::wstring> ToolkitClipboardText(xcb_window_t owner)
{
    GdkDisplay* display = gdk_display_get_default();
    if (!display || !GDK_IS_X11_DISPLAY(display) || !gdk_x11_window_lookup_for_display(display, owner))
        return std::nullopt;
    gchar* text =
        gtk_clipboard_wait_for_text(gtk_clipboard_get_for_display(display, GDK_SELECTION_CLIPBOARD));
    const std::wstring found = settings::FromUtf8(text ? text : "");
    g_free(text);
    return found;
}

void FlushToolkit()
{
    if (GdkDisplay* display = gdk_display_get_default())
        gdk_display_flush(display);
}

} // namespace voxtrel::platform
