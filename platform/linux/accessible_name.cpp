#include "platform/accessible_name.h"

#include <gtk/gtk.h>
#include <wx/window.h>

namespace voxtrel::platform {

void SetAccessibleName(wxWindow& control, std::wstring_view name)
{
    GtkWidget* widget = control.GetHandle();
    if (!widget)
        return;
    const wxString text(name.data(), name.size());
    // A control that scrolls is a frame around the one that has the focus; a box that drops down is one control.
    if (GTK_IS_BIN(widget) && !GTK_IS_BUTTON(widget) && !GTK_IS_COMBO_BOX(widget)) {
        if (GtkWidget* inner = gtk_bin_get_child(GTK_BIN(widget)))
            widget = inner;
    }
    atk_object_set_name(gtk_widget_get_accessible(widget), text.utf8_str());
}

} // namespace voxtrel::platform
