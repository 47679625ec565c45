#include "platform/focus.h"

#include "platform/linux/focus_widget.h"

#include <gtk/gtk.h>
#include <wx/listbox.h>
#include <wx/window.h>

#include <memory>

namespace voxtrel::platform {
namespace {

struct PathDeleter {
    void operator()(GtkTreePath* path) const { gtk_tree_path_free(path); }
};

} // namespace

void FocusContent(wxWindow& control)
{
    GtkWidget* const frame = control.GetHandle();
    if (frame != nullptr && GTK_IS_SCROLLED_WINDOW(frame))
        gtk_widget_set_can_focus(frame, FALSE);
}

// GTK chooses the first entry of a list that gets the focus and has no entry under its cursor. With a cursor,
// the first arrow key chooses.
void FocusWithoutChoice(wxListBox& list)
{
    if (list.IsEmpty() || list.GetSelection() != wxNOT_FOUND)
        return;
    auto* const view = GTK_TREE_VIEW(FocusWidget(list));
    GtkTreeSelection* const selection = gtk_tree_view_get_selection(view);
    const GtkSelectionMode mode = gtk_tree_selection_get_mode(selection);
    const std::unique_ptr<GtkTreePath, PathDeleter> first(gtk_tree_path_new_first());
    // Moving the cursor would choose, too.
    gtk_tree_selection_set_mode(selection, GTK_SELECTION_NONE);
    gtk_tree_view_set_cursor(view, first.get(), nullptr, FALSE);
    gtk_tree_selection_set_mode(selection, mode);
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
