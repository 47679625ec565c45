#pragma once

#include <wx/window.h>

namespace voxtrel::options {

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
