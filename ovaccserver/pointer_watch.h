#pragma once

#include "platform/accessible_source.h"

#include <chrono>
#include <optional>

namespace voxtrel::ovaccserver {

// Decides from the pointer's positions when to look what is under it: once it has come to rest, and again
// from time to time while it rests, because what is under it may change.
class PointerWatch {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    // As if the pointer had just moved.
    void Restart();

    // Takes the pointer's position at this moment; whether it is time for a look.
    bool WantsLook(platform::ScreenPoint point, TimePoint now);

    // The look that was wanted has ended; answered tells whether the program there answered in time. One that
    // does not is asked more and more seldom until the pointer moves.
    void Looked(bool answered, TimePoint now);

    // A hand that trembles does not move the pointer.
    static constexpr int kTremble = 3; // pixels
    static constexpr std::chrono::milliseconds kRest{40};
    // Some programs begin to arrange an answer when they are first asked.
    static constexpr std::chrono::milliseconds kSoonAgain{250};
    static constexpr std::chrono::milliseconds kAgain{1000};
    static constexpr std::chrono::milliseconds kAgainAtMost{30000};

private:
    std::optional<platform::ScreenPoint> place_; // where the pointer came to rest
    TimePoint since_;
    std::optional<TimePoint> looked_;
    std::chrono::milliseconds again_{}; // after the last look; zero before the second
};

} // namespace voxtrel::ovaccserver
