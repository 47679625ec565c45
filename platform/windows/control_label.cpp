#include "platform/control_label.h"

#include <wx/stattext.h>

namespace voxtrel::platform {

// The system itself takes a text for the label of the control that follows it.
void LabelControl(wxStaticText& label, wxWindow& control) { label.MoveBeforeInTabOrder(&control); }

} // namespace voxtrel::platform
