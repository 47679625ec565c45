#pragma once

class wxStaticText;
class wxWindow;

namespace voxtrel::platform {

// Ties a label to its control: the label's mnemonic puts the focus on the control, and screen readers call
// the control by the label.
void LabelControl(wxStaticText& label, wxWindow& control);

} // namespace voxtrel::platform
