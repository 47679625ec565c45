#include "options/view/balloon_preview.h"

#include <wx/dcclient.h>
#include <wx/graphics.h>

#include <algorithm>
#include <memory>

namespace voxtrel::options {
namespace {

// Device-independent pixels.
constexpr int kWidth = 320;
constexpr int kHeight = 96;
constexpr int kCorner = 14;
constexpr int kPadding = 12;
constexpr int kWedgeWidth = 18;
constexpr int kWedgeLength = 14;
constexpr int kWedgePlace = 48; // of its middle, from the left

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

// The text in lines that fit the width. A word that is wider stands alone and is cut by the edge.
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

} // namespace

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
    dc.SetClippingRegion(inside);
    dc.SetFont(font_);
    dc.SetTextForeground(kInk);
    const int lineHeight = dc.GetCharHeight();
    const wxArrayString lines = WrappedLines(dc, sample_, inside.width);
    const int textHeight = lineHeight * static_cast<int>(lines.size());
    int top = inside.y + std::max(0, (inside.height - textHeight) / 2);
    for (const wxString& line : lines) {
        dc.DrawText(line, inside.x, top);
        top += lineHeight;
    }
}

} // namespace voxtrel::options
