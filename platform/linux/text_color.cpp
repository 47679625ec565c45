// wxTextCtrl::SetStyle looks for the end of every style in the rest of the text, which takes as long as the
// text is. Tags of our own are found by the buffer's own index.

#include "platform/text_color.h"

#include <gtk/gtk.h>
#include <wx/colour.h>
#include <wx/textctrl.h>

#include <vector>

namespace voxtrel::platform {
namespace {

constexpr const char* kPrefix = "VOXTREL_COLOR_";

GtkTextBuffer* BufferOf(const wxTextCtrl& control)
{
    GtkWidget* view = gtk_bin_get_child(GTK_BIN(control.GetHandle()));
    return gtk_text_view_get_buffer(GTK_TEXT_VIEW(view));
}

std::vector<GtkTextTag*> ColorTags(GtkTextBuffer* buffer)
{
    std::vector<GtkTextTag*> tags;
    const auto collect = [](GtkTextTag* tag, gpointer data) {
        gchar* name = nullptr;
        g_object_get(tag, "name", &name, nullptr);
        if (name != nullptr && g_str_has_prefix(name, kPrefix))
            static_cast<std::vector<GtkTextTag*>*>(data)->push_back(tag);
        g_free(name);
    };
    gtk_text_tag_table_foreach(gtk_text_buffer_get_tag_table(buffer), collect, &tags);
    return tags;
}

GtkTextTag* TagOf(GtkTextBuffer* buffer, const wxColour& color)
{
    const wxString code = color.GetAsString(wxC2S_HTML_SYNTAX);
    const wxString name = kPrefix + code;
    GtkTextTag* tag = gtk_text_tag_table_lookup(gtk_text_buffer_get_tag_table(buffer), name.utf8_str());
    if (tag == nullptr)
        tag = gtk_text_buffer_create_tag(buffer, name.utf8_str(), "foreground",
                                         static_cast<const char*>(code.utf8_str()), nullptr);
    return tag;
}

void Apply(wxTextCtrl& control, long from, long to, const wxColour* color)
{
    GtkTextBuffer* buffer = BufferOf(control);
    GtkTextIter begin;
    GtkTextIter end;
    gtk_text_buffer_get_iter_at_offset(buffer, &begin, static_cast<gint>(from));
    gtk_text_buffer_get_iter_at_offset(buffer, &end, static_cast<gint>(to));
    GtkTextTag* const wanted = color ? TagOf(buffer, *color) : nullptr;
    for (GtkTextTag* tag : ColorTags(buffer)) {
        if (tag != wanted)
            gtk_text_buffer_remove_tag(buffer, tag, &begin, &end);
    }
    if (wanted)
        gtk_text_buffer_apply_tag(buffer, wanted, &begin, &end);
}

} // namespace

void SetTextColor(wxTextCtrl& control, long from, long to, const wxColour& color)
{
    Apply(control, from, to, &color);
}

void ClearTextColor(wxTextCtrl& control, long from, long to) { Apply(control, from, to, nullptr); }

} // namespace voxtrel::platform
