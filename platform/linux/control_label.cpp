#include "platform/control_label.h"

#include "platform/linux/focus_widget.h"

#include <wx/stattext.h>

namespace voxtrel::platform {

void LabelControl(wxStaticText& label, wxWindow& control)
{
    GtkWidget* const text = label.GetHandle();
    if (text != nullptr && GTK_IS_LABEL(text))
        gtk_label_set_mnemonic_widget(GTK_LABEL(text), FocusWidget(control));
}

} // namespace voxtrel::platform
