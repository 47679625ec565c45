#pragma once

#include <wx/region.h>
#include <wx/toplevel.h>

// The few things about windows that only the system itself can do.
namespace voxtrel::agent::view {

// Called once, before the window is first shown: it never takes the focus, neither when it appears nor when
// it is clicked, and is in no list of windows.
void KeepOutOfFocus(wxTopLevelWindow& window);

// Called just before a window is shown again: puts it where it is to appear.
void PlaceHidden(wxTopLevelWindow& window, const wxPoint& topLeft);

// Gives the window an outline, in dots of the screen.
void SetOutline(wxTopLevelWindow& window, const wxRegion& outline);

// Where on the screen the pointer was when the event that is being handled came about: it may be far from
// there by now.
wxPoint PointerAtEvent();

// Dots of the screen to one pixel of a window, in each direction.
int DotsToAPixel();

// Pixels for what measures one pixel at 96 dots an inch, with the user's own scale for fonts.
double FontScale();

// The scale of a bitmap on which text is as large as on a window.
double TextBitmapScale();

} // namespace voxtrel::agent::view
