#pragma once

#include <wx/arrstr.h>
#include <wx/font.h>
#include <wx/window.h>

class wxDC;

namespace voxtrel::options {

struct FittedText {
    wxFont font;
    wxArrayString lines;
    int lineHeight = 0; // pixels
};

// As much of the text as the room (pixels) holds in whole lines, with an ellipsis when that is not all; in a
// smaller font when not even one line has the height. Leaves dc with that font.
FittedText FitText(wxDC& dc, const wxString& text, const wxFont& font, const wxSize& room);

// Shows a text as the character's balloon does, in the balloon's lettering. A picture only: it takes no
// focus.
class BalloonPreview final : public wxWindow {
public:
    explicit BalloonPreview(wxWindow* parent);

    void SetSample(const wxString& text);
    void SetLettering(const wxString& fontName, int points);

    bool AcceptsFocus() const override { return false; }
    // Beside the balloon the page is seen.
    bool HasTransparentBackground() override { return true; }

protected:
    wxSize DoGetBestClientSize() const override;

private:
    void OnPaint(wxPaintEvent& event);

    wxString sample_;
    wxFont font_;
};

} // namespace voxtrel::options
