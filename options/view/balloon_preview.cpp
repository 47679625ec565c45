#include "options/view/balloon_preview.h"

#include <wx/control.h>
#include <wx/dcclient.h>
#include <wx/graphics.h>

#include <algorithm>
#include <memory>

namespace voxtrel::options {
namespace {

// Device-independent pixels.
constexpr int kWidth = 320;
constexpr int kHeight = 142; // one line of 72 points, at 96 dots per inch
constexpr int kCorner = 14;
constexpr int kPadding = 12;
constexpr int kWedgeWidth = 18;
constexpr int kWedgeLength = 14;
constexpr int kWedgePlace = 48; // of its middle, from the left

constexpr double kShrinking = 0.95; // of a font that is too large, step by step

const wxColour kPaper(255, 248, 230);
const wxColour kInk(43, 34, 48);
const wxColour kBorder(59, 29, 74);

wxGraphicsPath Outline(wxGraphicsContext& graphics, const wxRect2DDouble& body, double corner,
                       double wedgePlace, double wedgeWidth, double wedgeLength)
{
    const double left = body.GetLeft();
    const double right = body.GetRight();
    const double top = body.GetTop();
    const double bottom = body.GetBottom();
    wxGraphicsPath path = graphics.CreatePath();
    path.MoveToPoint(left + corner, top);
    path.AddArcToPoint(right, top, right, bottom, corner);
    path.AddArcToPoint(right, bottom, left, bottom, corner);
    path.AddLineToPoint(wedgePlace + wedgeWidth / 2, bottom);
    path.AddLineToPoint(wedgePlace - wedgeWidth / 2, bottom + wedgeLength);
    path.AddLineToPoint(wedgePlace - wedgeWidth / 2, bottom);
    path.AddArcToPoint(left, bottom, left, top, corner);
    path.AddArcToPoint(left, top, right, top, corner);
    path.CloseSubpath();
    return path;
}

// The text in lines that fit the width. A word that is wider stands alone.
wxArrayString WrappedLines(const wxDC& dc, const wxString& text, int width)
{
    wxArrayString lines;
    wxString line;
    for (const wxString& word : wxSplit(text, ' ', '\0')) {
        const wxString longer = line.empty() ? word : line + " " + word;
        if (line.empty() || dc.GetTextExtent(longer).x <= width) {
            line = longer;
        } else {
            lines.push_back(line);
            line = word;
        }
    }
    if (!line.empty())
        lines.push_back(line);
    return lines;
}

// The font, or as much of its size as gives a line of that height at most.
wxFont FontOfLineHeight(wxDC& dc, wxFont font, int height)
{
    dc.SetFont(font);
    while (dc.GetCharHeight() > height && font.GetFractionalPointSize() > 1) {
        font.SetFractionalPointSize(std::max(1.0, font.GetFractionalPointSize() * kShrinking));
        dc.SetFont(font);
    }
    return font;
}

} // namespace

FittedText FitText(wxDC& dc, const wxString& text, const wxFont& font, const wxSize& room)
{
    FittedText fitted;
    fitted.font = FontOfLineHeight(dc, font, room.y);
    fitted.lineHeight = dc.GetCharHeight();
    const wxArrayString all = WrappedLines(dc, text, room.x);
    const std::size_t seen =
        std::min(all.size(), static_cast<std::size_t>(std::max(1, room.y / fitted.lineHeight)));
    for (std::size_t i = 0; i < seen; ++i) {
        wxString line = all[i];
        if (i + 1 == seen) { // what is left over is told by an ellipsis
            for (std::size_t left = seen; left < all.size(); ++left)
                line += " " + all[left];
        }
        fitted.lines.push_back(
            wxControl::Ellipsize(line, dc, wxELLIPSIZE_END, room.x, wxELLIPSIZE_FLAGS_NONE));
    }
    return fitted;
}

BalloonPreview::BalloonPreview(wxWindow* parent)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxFULL_REPAINT_ON_RESIZE), font_(GetFont())
{
    SetCanFocus(false);
    Bind(wxEVT_PAINT, &BalloonPreview::OnPaint, this);
}

void BalloonPreview::SetSample(const wxString& text)
{
    sample_ = text;
    Refresh();
}

void BalloonPreview::SetLettering(const wxString& fontName, int points)
{
    if (points < 1)
        return;
    font_ = wxFont(wxFontInfo(points).FaceName(fontName));
    Refresh();
}

wxSize BalloonPreview::DoGetBestClientSize() const { return FromDIP(wxSize(kWidth, kHeight)); }

void BalloonPreview::OnPaint(wxPaintEvent&)
{
    wxPaintDC dc(this);
    const wxSize size = GetClientSize();
    const wxRect2DDouble body(1, 1, size.x - 2, size.y - 3 - FromDIP(kWedgeLength));
    {
        const std::unique_ptr<wxGraphicsContext> graphics(wxGraphicsContext::Create(dc));
        graphics->SetBrush(wxBrush(kPaper));
        graphics->SetPen(wxPen(kBorder, FromDIP(1)));
        graphics->DrawPath(Outline(*graphics, body, FromDIP(kCorner), FromDIP(kWedgePlace),
                                   FromDIP(kWedgeWidth), FromDIP(kWedgeLength)));
    }
    const int padding = FromDIP(kPadding);
    const wxRect inside =
        wxRect(1, 1, size.x - 2, size.y - 3 - FromDIP(kWedgeLength)).Deflate(padding, padding / 2);
    if (inside.IsEmpty())
        return;
    const FittedText text = FitText(dc, sample_, font_, inside.GetSize());
    dc.SetClippingRegion(inside);
    dc.SetFont(text.font);
    dc.SetTextForeground(kInk);
    int top = inside.y + (inside.height - text.lineHeight * static_cast<int>(text.lines.size())) / 2;
    for (const wxString& line : text.lines) {
        dc.DrawText(line, inside.x, top);
        top += text.lineHeight;
    }
}

} // namespace voxtrel::options
