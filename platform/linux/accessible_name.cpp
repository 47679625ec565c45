#include "platform/accessible_name.h"

#include "platform/linux/focus_widget.h"

#include <gtk/gtk.h>
#include <wx/window.h>

namespace voxtrel::platform {

void SetAccessibleName(wxWindow& control, std::wstring_view name)
{
    GtkWidget* const widget = FocusWidget(control);
    if (widget == nullptr)
        return;
    const wxString text(name.data(), name.size());
    atk_object_set_name(gtk_widget_get_accessible(widget), text.utf8_str());
}

} // namespace voxtrel::platform
