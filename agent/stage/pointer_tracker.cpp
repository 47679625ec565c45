#include "agent/stage/pointer_tracker.h"

#include <cstdlib>

namespace voxtrel::agent::stage {
namespace {

constexpr int kLeftButton = 1;

} // namespace

PointerTracker::Recognized PointerTracker::Press(int button, int shift, Point at)
{
    if (dragging_)
        return {};
    button_ = button;
    shift_ = shift;
    pressed_ = last_ = at;
    answered_ = false;
    return {};
}

PointerTracker::Recognized PointerTracker::DoublePress(int button, int shift, Point at)
{
    if (dragging_)
        return {};
    static_cast<void>(Press(button, shift, at));
    answered_ = true;
    return {Gesture::DblClick, button, shift, at};
}

PointerTracker::Recognized PointerTracker::Move(Point at)
{
    if (button_ != kLeftButton)
        return {};
    last_ = at;
    if (dragging_)
        return {Gesture::Drag, kLeftButton, shift_, at};
    const Point distance = Distance();
    if (std::abs(distance.x) <= kDragThreshold && std::abs(distance.y) <= kDragThreshold)
        return {};
    dragging_ = true;
    return {Gesture::DragStart, kLeftButton, shift_, pressed_};
}

PointerTracker::Recognized PointerTracker::Release(int button, int shift, Point at)
{
    if (button_ != button)
        return {};
    button_.reset();
    if (!dragging_)
        return answered_ ? Recognized{} : Recognized{Gesture::Click, button, shift, at};
    dragging_ = false;
    last_ = at;
    return {Gesture::DragComplete, button, shift, at};
}

PointerTracker::Recognized PointerTracker::Lost()
{
    button_.reset();
    if (!dragging_)
        return {};
    dragging_ = false;
    return {Gesture::DragComplete, kLeftButton, shift_, last_};
}

} // namespace voxtrel::agent::stage
