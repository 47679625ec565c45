#pragma once

class wxWindow;
typedef struct _GtkWidget GtkWidget;

namespace voxtrel::platform {

// The widget of a control that takes the focus and that screen readers tell of: a control of wx may be a
// frame or a box around it. Null for a control that was not created yet.
GtkWidget* FocusWidget(const wxWindow& control);

} // namespace voxtrel::platform
