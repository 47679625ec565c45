#include "platform/focus.h"

#include <gtk/gtk.h>
#include <wx/window.h>

namespace voxtrel::platform {

void FocusContent(wxWindow& control)
{
    GtkWidget* const frame = control.GetHandle();
    if (frame != nullptr && GTK_IS_SCROLLED_WINDOW(frame))
        gtk_widget_set_can_focus(frame, FALSE);
}

} // namespace voxtrel::platform
