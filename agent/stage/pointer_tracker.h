#pragma once

#include "agent/control.h"
#include "agent/stage/geometry.h"

#include <optional>

namespace voxtrel::agent::stage {

// Farther than this, in pixels along either axis, a press with the left button becomes a drag.
inline constexpr int kDragThreshold = 4;

// Tells clicks, double clicks and drags apart.
class PointerTracker {
public:
    enum class Gesture { None, Click, DblClick, DragStart, Drag, DragComplete };

    // A gesture and, for all but None and Drag, the button, shift state and place that its event carries.
    struct Recognized {
        Gesture gesture = Gesture::None;
        int button = 0;
        int shift = 0;
        Point at;
    };

    Recognized Press(int button, int shift, Point at);
    Recognized DoublePress(int button, int shift, Point at);
    Recognized Move(Point at);
    Recognized Release(int button, int shift, Point at);
    Recognized Lost();

    bool Dragging() const { return dragging_; }

    // How far the pointer has gone since the press.
    Point Distance() const { return {last_.x - pressed_.x, last_.y - pressed_.y}; }

private:
    std::optional<int> button_; // held down
    bool answered_ = false;     // its press was told of as a double click
    int shift_ = 0;
    Point pressed_;
    Point last_;
    bool dragging_ = false;
};

} // namespace voxtrel::agent::stage
