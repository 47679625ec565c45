#include "platform/linux/focus_widget.h"

#include <gtk/gtk.h>
#include <wx/window.h>

#include <memory>

namespace voxtrel::platform {
namespace {

struct ListDeleter {
    void operator()(GList* list) const { g_list_free(list); }
};

// Null when neither the widget nor anything in it takes the focus.
GtkWidget* FindFocusable(GtkWidget* widget)
{
    // The button inside a drop-down list is a part of it.
    if (gtk_widget_get_can_focus(widget) || GTK_IS_COMBO_BOX(widget))
        return widget;
    if (!GTK_IS_CONTAINER(widget))
        return nullptr;
    const std::unique_ptr<GList, ListDeleter> children(gtk_container_get_children(GTK_CONTAINER(widget)));
    for (const GList* child = children.get(); child != nullptr; child = child->next) {
        if (GtkWidget* found = FindFocusable(GTK_WIDGET(child->data)))
            return found;
    }
    return nullptr;
}

} // namespace

GtkWidget* FocusWidget(const wxWindow& control)
{
    GtkWidget* const widget = control.GetHandle();
    if (widget == nullptr)
        return nullptr;
    // A scrolled window takes the focus itself, for its scroll bars; what it shows is what counts.
    if (GTK_IS_SCROLLED_WINDOW(widget)) {
        if (GtkWidget* const inner = gtk_bin_get_child(GTK_BIN(widget)))
            return inner;
    }
    GtkWidget* const found = FindFocusable(widget);
    return found != nullptr ? found : widget;
}

} // namespace voxtrel::platform
