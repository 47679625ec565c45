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

// wx leaves what was switched off out of the order that it gives to GTK, and makes a new one only after a
// move.
void EnableInTabOrder(wxWindow& control, bool enabled)
{
    if (!control.Enable(enabled))
        return;
    if (wxWindow* const before = control.GetPrevSibling())
        control.MoveAfterInTabOrder(before);
    else if (wxWindow* const after = control.GetNextSibling())
        control.MoveBeforeInTabOrder(after);
}

} // namespace voxtrel::platform
