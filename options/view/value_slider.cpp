#include "options/view/value_slider.h"

#include "options/sliders.h"

#include <wx/event.h>

#include <optional>

namespace voxtrel::options {
namespace {

constexpr int kStepsOfAPage = 4;
constexpr int kWidth = 240; // at least; device-independent pixels

// Upwards for a positive number. Towards the right and the top is more.
std::optional<int> StepsOf(int key)
{
    switch (key) {
    case WXK_LEFT:
    case WXK_DOWN:
    case WXK_NUMPAD_LEFT:
    case WXK_NUMPAD_DOWN:
        return -1;
    case WXK_RIGHT:
    case WXK_UP:
    case WXK_NUMPAD_RIGHT:
    case WXK_NUMPAD_UP:
        return 1;
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
        return -kStepsOfAPage;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
        return kStepsOfAPage;
    default:
        return std::nullopt;
    }
}

} // namespace

ValueSlider::ValueSlider(wxWindow* parent, const char* name, Slider which)
    : wxSlider(parent, wxID_ANY, RangeOf(which).lowest, RangeOf(which).lowest, RangeOf(which).highest),
      which_(which)
{
    SetName(name);
    SetMinSize(wxSize(FromDIP(kWidth), -1));
    Bind(wxEVT_KEY_DOWN, &ValueSlider::OnKey, this);
}

void ValueSlider::OnKey(wxKeyEvent& event)
{
    const std::optional<int> steps = event.HasAnyModifiers() ? std::nullopt : StepsOf(event.GetKeyCode());
    if (steps)
        MoveTo(ValueStepsFrom(which_, GetValue(), *steps));
    else if (event.GetKeyCode() == WXK_HOME)
        MoveTo(GetMin());
    else if (event.GetKeyCode() == WXK_END)
        MoveTo(GetMax());
    else
        event.Skip();
}

void ValueSlider::MoveTo(int value)
{
    if (value == GetValue())
        return;
    SetValue(value);
    wxCommandEvent changed(wxEVT_SLIDER, GetId());
    changed.SetEventObject(this);
    changed.SetInt(value);
    ProcessWindowEvent(changed);
}

} // namespace voxtrel::options
