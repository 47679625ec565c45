#include "agent/view/native_window.h"

#include <wx/dcscreen.h>
#include <wx/msw/wrapwin.h>

#include <commctrl.h>

namespace voxtrel::agent::view {
namespace {

LRESULT CALLBACK RefuseFocusOfClick(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR)
{
    return message == WM_MOUSEACTIVATE ? MA_NOACTIVATE : ::DefSubclassProc(window, message, wParam, lParam);
}

} // namespace

void KeepOutOfFocus(wxTopLevelWindow& window)
{
    const HWND handle = window.GetHWND();
    const LONG_PTR style = ::GetWindowLongPtrW(handle, GWL_EXSTYLE);
    ::SetWindowLongPtrW(handle, GWL_EXSTYLE, style | WS_EX_NOACTIVATE);
    // The style alone does not keep every system from activating a window that is clicked.
    ::SetWindowSubclass(handle, RefuseFocusOfClick, 0, 0);
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
