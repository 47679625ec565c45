#include "platform/accessible_name.h"

#include "platform/linux/focus_widget.h"

#include <gtk/gtk.h>
#include <wx/notebook.h>
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

// While GTK takes the pages away one by one it looks for the tabs of those that are gone, and complains,
// unless tabs are not shown.
void ForgetTabs(wxNotebook& notebook)
{
    gtk_notebook_set_show_tabs(GTK_NOTEBOOK(notebook.GetHandle()), FALSE);
}

} // namespace voxtrel::platform
