#pragma once

#include "platform/accessible_object.h"

#include <chrono>

namespace voxtrel::platform {

// When a look must have come to its end.
class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds fromNow) : end_(Clock::now() + fromNow) {}

    // In whole milliseconds, rounded up; zero or less when it is over.
    std::chrono::milliseconds Left() const
    {
        return std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
    }
    bool IsOver() const { return Left().count() <= 0; }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point end_;
};

// What one of the ways to ask found.
struct AccessibleAnswer {
    AccessibleObject object{};
    // Whether the object is the deepest one itself, not one around it that had to speak for it.
    bool deepest = false;
    // Whether it told what kind of control it is, not just that it is some window.
    bool kindKnown = false;

    // Another way to ask will not find out more.
    bool IsFinal() const { return deepest && kindKnown; }
};

} // namespace voxtrel::platform
