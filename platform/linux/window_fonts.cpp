#include "platform/window_fonts.h"

#include <gtk/gtk.h>
#include <wx/window.h>

namespace voxtrel::platform {
namespace {

// Also what wx does not know of: the label in a button, the cell of a drop-down list.
void Restyle(GtkWidget* widget, gpointer)
{
    g_signal_emit_by_name(widget, "style-updated");
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), Restyle, nullptr);
}

} // namespace

// GTK tells its widgets of a new style only with the next picture of a window that is seen.
void SettleFonts(wxWindow& window)
{
    if (GtkWidget* const widget = window.GetHandle())
        Restyle(widget, nullptr);
}

} // namespace voxtrel::platform
