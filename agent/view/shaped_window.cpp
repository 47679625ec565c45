#include "agent/view/shaped_window.h"

#include "agent/view/native_window.h"

#include <wx/dcbuffer.h>
#include <wx/image.h>
#include <wx/region.h>

#include <algorithm>
#include <cstddef>

namespace voxtrel::agent::view {
namespace {

constexpr long kStyle = wxBORDER_NONE | wxFRAME_SHAPED | wxSTAY_ON_TOP | wxFRAME_NO_TASKBAR;

// Rows that are alike become one rectangle for each of their runs.
wxRegion RegionOf(const stage::Picture& picture)
{
    wxRegion region;
    const int width = picture.size.width;
    const auto row = [&](int y) { return picture.mask.begin() + static_cast<std::ptrdiff_t>(y) * width; };
    for (int top = 0; top < picture.size.height;) {
        int bottom = top + 1;
        while (bottom < picture.size.height && std::equal(row(top), row(top) + width, row(bottom)))
            ++bottom;
        const auto end = row(top) + width;
        for (auto run = std::find(row(top), end, 255); run != end;) {
            const auto behind = std::find(run, end, 0);
            region.Union(static_cast<int>(run - row(top)), top, static_cast<int>(behind - run), bottom - top);
            run = std::find(behind, end, 255);
        }
        top = bottom;
    }
    return region;
}

wxBitmap BitmapOf(const stage::Picture& picture, double scale)
{
    wxImage image(picture.size.width, picture.size.height, false);
    std::copy(picture.colors.begin(), picture.colors.end(), image.GetData());
    return wxBitmap(image, wxBITMAP_SCREEN_DEPTH, scale);
}

} // namespace

ShapedWindow::ShapedWindow(const wxString& title)
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    // A window without a place is given one by the window manager, even when it is moved to the corner
    // afterwards.
    Create(nullptr, wxID_ANY, title, wxPoint(0, 0), wxSize(1, 1), kStyle);
    SetName(title);
    KeepOutOfFocus(*this);
    Bind(wxEVT_PAINT, &ShapedWindow::OnPaint, this);
    // Nobody closes a part of the character; the stage hides it.
    Bind(wxEVT_CLOSE_WINDOW, [](wxCloseEvent& event) { event.Veto(event.CanVeto()); });
}

void ShapedWindow::SetPicture(const stage::Picture& picture, const wxRect& place)
{
    if (bounds_ != place)
        SetSize(place.x, place.y, place.width, place.height, wxSIZE_ALLOW_MINUS_ONE);
    bounds_ = place;
    bitmap_ = BitmapOf(picture, static_cast<double>(picture.size.width) / std::max(place.width, 1));
    if (shapeSize_ != picture.size || shape_ != picture.mask) {
        SetOutline(*this, RegionOf(picture));
        shapeSize_ = picture.size;
        shape_ = picture.mask;
    }
    Refresh(false);
}

void ShapedWindow::MovePicture(const wxPoint& topLeft)
{
    if (bounds_.GetPosition() == topLeft)
        return;
    bounds_.SetPosition(topLeft);
    Move(topLeft, wxSIZE_ALLOW_MINUS_ONE);
}

void ShapedWindow::Appear()
{
    if (!IsShown()) {
        PlaceHidden(*this, bounds_.GetPosition());
        ShowWithoutActivating();
    }
    Update();
}

void ShapedWindow::OnPaint(wxPaintEvent&)
{
    wxAutoBufferedPaintDC dc(this);
    if (bitmap_.IsOk())
        dc.DrawBitmap(bitmap_, 0, 0);
    PaintOver(dc);
}

} // namespace voxtrel::agent::view
