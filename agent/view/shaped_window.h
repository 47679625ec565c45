#pragma once

#include "agent/stage/picture.h"

#include <wx/bitmap.h>
#include <wx/frame.h>

#include <cstdint>
#include <vector>

namespace voxtrel::agent::view {

// A topmost window of any outline, without border, that never takes the focus.
class ShapedWindow : public wxFrame {
public:
    explicit ShapedWindow(const wxString& title);

    // Helpers of the program's windows: they do not keep it alive.
    bool ShouldPreventAppExit() const override { return false; }

protected:
    // Takes on the picture's outline and colours, at this place. Nothing is done that would change nothing.
    void SetPicture(const stage::Picture& picture, const wxRect& place);
    void MovePicture(const wxPoint& topLeft);
    void Appear();

    // What stands on the picture.
    virtual void PaintOver(wxDC& dc) { (void)dc; }

private:
    void OnPaint(wxPaintEvent& event);

    wxRect bounds_; // as last asked of the window manager
    wxBitmap bitmap_;
    stage::Size shapeSize_;
    std::vector<std::uint8_t> shape_; // the mask that the window's outline was made of
};

} // namespace voxtrel::agent::view
