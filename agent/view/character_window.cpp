#include "agent/view/character_window.h"

#include "agent/view/native_window.h"

#include <wx/display.h>

#include <algorithm>
#include <utility>

namespace voxtrel::agent::view {
namespace {

int ButtonOf(const wxMouseEvent& event)
{
    switch (event.GetButton()) {
    case wxMOUSE_BTN_RIGHT:
        return 2;
    case wxMOUSE_BTN_MIDDLE:
        return 4;
    default:
        return 1;
    }
}

int ShiftOf(const wxMouseEvent& event)
{
    return (event.ShiftDown() ? 1 : 0) + (event.ControlDown() ? 2 : 0) + (event.AltDown() ? 4 : 0);
}

stage::Point PlaceOfPointer()
{
    const wxPoint at = PointerAtEvent();
    return {at.x, at.y};
}

} // namespace

CharacterWindow::CharacterWindow(const wxString& name, stage::PointerInput& input, MenuHook menu)
    : ShapedWindow(name), input_(input), menu_(std::move(menu))
{
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_RIGHT_DOWN, wxEVT_MIDDLE_DOWN})
        Bind(type, &CharacterWindow::OnPress, this);
    for (const auto& type : {wxEVT_LEFT_DCLICK, wxEVT_RIGHT_DCLICK, wxEVT_MIDDLE_DCLICK})
        Bind(type, &CharacterWindow::OnDoublePress, this);
    for (const auto& type : {wxEVT_LEFT_UP, wxEVT_RIGHT_UP, wxEVT_MIDDLE_UP})
        Bind(type, &CharacterWindow::OnRelease, this);
    Bind(wxEVT_MOTION, &CharacterWindow::OnMotion, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { input_.PressLost(); });
}

void CharacterWindow::ShowFrame(std::shared_ptr<const stage::Picture> picture, const wxRect& place)
{
    picture_ = std::move(picture);
    place_ = place;
    // Window managers pull a window that was moved off the screen back to its edge, so it is hidden instead.
    if (!AnythingToSee()) {
        Hide();
        return;
    }
    SetPicture(*picture_, place_);
    Appear();
}

void CharacterWindow::MoveFrame(const wxPoint& topLeft)
{
    if (picture_ == nullptr)
        return;
    place_.SetPosition(topLeft);
    if (IsShown() && AnythingToSee())
        MovePicture(topLeft);
    else
        ShowFrame(picture_, place_);
}

void CharacterWindow::HideFrame()
{
    picture_.reset();
    Hide();
}

bool CharacterWindow::AnythingToSee() const
{
    const stage::RowRange rows = stage::RowsInUse(*picture_);
    const int height = std::max(picture_->size.height, 1);
    const int first = rows.first * place_.height / height;
    const wxRect used(place_.x, place_.y + first, place_.width, rows.end * place_.height / height - first);
    for (unsigned i = 0; i < wxDisplay::GetCount(); ++i) {
        if (wxDisplay(i).GetGeometry().Intersects(used))
            return true;
    }
    return false;
}

// Where the window is on the screen is not asked: it may be moving under the pointer, and on a busy desktop
// the toolkit learns the place of a new window late or never. Only the pointer's own place is sure.
void CharacterWindow::OnPress(wxMouseEvent& event)
{
    if (event.LeftDown() && !HasCapture())
        CaptureMouse();
    input_.Press(ButtonOf(event), ShiftOf(event), PlaceOfPointer());
}

void CharacterWindow::OnDoublePress(wxMouseEvent& event)
{
    if (event.LeftDClick() && !HasCapture())
        CaptureMouse();
    input_.DoublePress(ButtonOf(event), ShiftOf(event), PlaceOfPointer());
}

void CharacterWindow::OnRelease(wxMouseEvent& event)
{
    if (event.LeftUp() && HasCapture())
        ReleaseMouse();
    input_.Release(ButtonOf(event), ShiftOf(event), PlaceOfPointer());
    if (event.RightUp() && menu_)
        menu_(*this, event.GetPosition());
}

void CharacterWindow::OnMotion(wxMouseEvent& event)
{
    if (event.Dragging())
        input_.Move(PlaceOfPointer());
}

} // namespace voxtrel::agent::view
