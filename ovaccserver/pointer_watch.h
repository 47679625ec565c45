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

    // Takes the pointer as it is at this moment; whether it is time for a look. A button that is pressed is
    // no rest: what it did is looked at when it is let go.
    bool WantsLook(platform::PointerState pointer, TimePoint now);

    // The look that was wanted has ended; answered tells whether the program there answered in time. One that
    // does not is asked more seldom.
    void Looked(bool answered, TimePoint now);

    bool RestsLong(TimePoint now) const { return place_ && now - since_ > kLongRest; }

    // A hand that trembles does not move the pointer.
    static constexpr int kTremble = 3; // pixels
    static constexpr std::chrono::milliseconds kRest{40};
    static constexpr std::chrono::milliseconds kLongRest{1500};

    // Each pause before another look at the same place is twice as long as the one before. The first is
    // short: some programs begin to arrange an answer when they are first asked.
    static constexpr std::chrono::milliseconds kFirstPause{250};
    static constexpr std::chrono::milliseconds kLongestPause{3000};
    static constexpr std::chrono::milliseconds kFirstPauseUnanswered{1000};
    static constexpr std::chrono::milliseconds kLongestPauseUnanswered{30000};

private:
    std::optional<platform::ScreenPoint> place_; // where the pointer came to rest
    TimePoint since_;
    std::optional<TimePoint> looked_;
    std::chrono::milliseconds pause_{}; // before the next look; zero before the first
};

} // namespace voxtrel::ovaccserver
