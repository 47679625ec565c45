#pragma once

#include <wx/iconbndl.h>
#include <wx/taskbar.h>

#include <functional>
#include <string_view>

namespace voxtrel::app {

// The icon in the notification area. Where a desktop has none, every call does nothing.
class TrayIcon final : public wxTaskBarIcon {
public:
    // MouseUp is called with the code of the button (2 for the right one), Click for a plain click.
    TrayIcon(wxIconBundle icons, std::function<void(int)> MouseUp, std::function<void()> Click);

    void SetShown(bool shown);
    void SetTip(std::wstring_view tip);

private:
    void Update();

    wxIconBundle icons_;
    wxString tip_;
    bool shown_ = false;
};

} // namespace voxtrel::app
