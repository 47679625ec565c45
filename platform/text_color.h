#pragma once

class wxColour;
class wxTextCtrl;

namespace voxtrel::platform {

// Colours the characters of a rich text control from one of its positions up to another. Costs what the range costs,
// however long the text is.
void SetTextColor(wxTextCtrl& control, long from, long to, const wxColour& color);

// Gives them the colour of ordinary text back.
void ClearTextColor(wxTextCtrl& control, long from, long to);

} // namespace voxtrel::platform
