#include "agent/view/native_window.h"

#include <wx/dcscreen.h>
#include <wx/msw/wrapwin.h>

namespace voxtrel::agent::view {

void KeepOutOfFocus(wxTopLevelWindow& window)
{
    const HWND handle = window.GetHWND();
    const LONG_PTR style = ::GetWindowLongPtrW(handle, GWL_EXSTYLE);
    ::SetWindowLongPtrW(handle, GWL_EXSTYLE, style | WS_EX_NOACTIVATE);
}

void PlaceHidden(wxTopLevelWindow&, const wxPoint&) {}

void SetOutline(wxTopLevelWindow& window, const wxRegion& outline) { window.SetShape(outline); }

wxPoint PointerAtEvent()
{
    const DWORD position = ::GetMessagePos();
    const POINTS at = MAKEPOINTS(position);
    return {at.x, at.y};
}

int DotsToAPixel() { return 1; }

double FontScale() { return wxScreenDC().GetPPI().y / 96.0; }

// A bitmap counts as one of 96 dots an inch, whatever the screen has.
double TextBitmapScale() { return FontScale(); }

} // namespace voxtrel::agent::view
