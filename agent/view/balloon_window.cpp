#include "agent/view/balloon_window.h"

#include "agent/stage/balloon_shape.h"
#include "agent/view/native_window.h"

#include <wx/dc.h>
#include <wx/font.h>

#include <cstddef>

namespace voxtrel::agent::view {
namespace {

wxColour ColourOf(const acs::Color& color) { return {color.red, color.green, color.blue}; }

// The window's name is what the balloon says: assistive programs read it there.
wxString TextOf(const stage::BalloonPicture& balloon)
{
    wxString text;
    for (const std::wstring& line : balloon.lines) {
        if (!text.empty())
            text += ' ';
        text += line;
    }
    return text;
}

// Alike in everything that the painted shape depends on; the place on the screen may differ.
bool SameShape(const stage::BalloonPicture& left, const stage::BalloonPicture& right)
{
    stage::BalloonPicture other = right;
    other.lines = left.lines;
    other.body.x = left.body.x;
    other.body.y = left.body.y;
    return left == other;
}

} // namespace

wxFont FontOf(const stage::FontSpec& font)
{
    wxFontInfo info(font.points);
    info.FaceName(font.name).Bold(font.bold).Italic(font.italic);
    wxFont made(info);
    return made.IsOk() ? made : wxFont(wxFontInfo(font.points).Family(wxFONTFAMILY_SWISS));
}

BalloonWindow::BalloonWindow(stage::PointerInput& input) : ShapedWindow(wxString())
{
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_RIGHT_DOWN, wxEVT_MIDDLE_DOWN})
        Bind(type, [&input](wxMouseEvent&) { input.BalloonPress(); });
}

void BalloonWindow::ShowBalloon(const stage::BalloonPicture& balloon, double borderWidth)
{
    const bool sameShape = balloon_ && SameShape(*balloon_, balloon);
    if (!balloon_ || balloon_->font != balloon.font)
        font_ = FontOf(balloon.font);
    balloon_ = balloon;
    SetTitle(TextOf(balloon));
    const stage::Rect bounds = stage::BalloonBounds(balloon);
    if (sameShape) {
        MovePicture(wxPoint(bounds.x, bounds.y));
        Refresh(false);
    } else {
        SetPicture(stage::PaintBalloonShape(balloon, borderWidth, DotsToAPixel()),
                   wxRect(bounds.x, bounds.y, bounds.width, bounds.height));
    }
    Appear();
}

void BalloonWindow::PaintOver(wxDC& dc)
{
    if (!balloon_)
        return;
    const stage::Rect bounds = stage::BalloonBounds(*balloon_);
    const int x = balloon_->body.x - bounds.x + balloon_->text.x;
    const int y = balloon_->body.y - bounds.y + balloon_->text.y;
    dc.SetFont(font_);
    dc.SetTextForeground(ColourOf(balloon_->colors.text));
    dc.SetBackgroundMode(wxBRUSHSTYLE_TRANSPARENT);
    for (std::size_t i = 0; i < balloon_->lines.size(); ++i)
        dc.DrawText(balloon_->lines[i], x, y + static_cast<int>(i) * balloon_->lineHeight);
}

} // namespace voxtrel::agent::view
