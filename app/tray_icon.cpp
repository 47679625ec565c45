#include "app/tray_icon.h"

#include <wx/bmpbndl.h>

#include <utility>

namespace voxtrel::app {
namespace {

constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;

} // namespace

TrayIcon::TrayIcon(wxIconBundle icons, std::function<void(int)> MouseUp, std::function<void()> Click)
    : icons_(std::move(icons))
{
    // The two events that every desktop sends: the one of a plain click, and the one that asks for the menu.
    Bind(wxEVT_TASKBAR_LEFT_DOWN, [MouseUp, Click](wxTaskBarIconEvent&) {
        MouseUp(kLeftButton);
        Click();
    });
    Bind(wxEVT_TASKBAR_CLICK, [MouseUp](wxTaskBarIconEvent&) { MouseUp(kRightButton); });
}

void TrayIcon::SetShown(bool shown)
{
    shown_ = shown;
    Update();
}

void TrayIcon::SetTip(std::wstring_view tip)
{
    tip_ = wxString(tip.data(), tip.size());
    Update();
}

void TrayIcon::Update()
{
    if (shown_ && IsAvailable())
        SetIcon(wxBitmapBundle::FromIconBundle(icons_), tip_);
    else if (IsIconInstalled())
        RemoveIcon();
}

} // namespace voxtrel::app
