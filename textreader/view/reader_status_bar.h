#pragma once

#include <wx/panel.h>

#include <functional>
#include <string_view>

class wxButton;
class wxStaticText;

namespace voxtrel::textreader {

// The panels below the text. Those that switch something are buttons, so that the keyboard reaches them too.
class ReaderStatusBar final : public wxPanel {
public:
    struct Actions {
        std::function<void()> AutoCloseClick;
        std::function<void()> BlockHighlightClick;
    };

    ReaderStatusBar(wxWindow* parent, Actions actions);

    void ShowMode(std::wstring_view text);
    void ShowAutoClose(std::wstring_view text);
    void ShowBlockHighlight(std::wstring_view text);

private:
    void Show(wxWindow& panel, std::wstring_view text);

    wxStaticText* mode_; // all owned by the panel
    wxButton* autoClose_;
    wxButton* blockHighlight_;
};

} // namespace voxtrel::textreader
