#include "platform/text_color.h"

#include <wx/settings.h>
#include <wx/textctrl.h>

namespace voxtrel::platform {

void SetTextColor(wxTextCtrl& control, long from, long to, const wxColour& color)
{
    control.SetStyle(from, to, wxTextAttr(color));
}

void ClearTextColor(wxTextCtrl& control, long from, long to)
{
    control.SetStyle(from, to, wxTextAttr(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT)));
}

} // namespace voxtrel::platform
