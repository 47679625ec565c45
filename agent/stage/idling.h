#pragma once

#include "agent/acs/character_file.h"
#include "agent/stage/random.h"
#include "agent/stage/time.h"

#include <array>
#include <optional>
#include <vector>

namespace voxtrel::agent::stage {

// From the last activity to the first idle animation, and from the end of one to the next.
inline constexpr Time kIdleAfter{10'000};
inline constexpr Time kShortestIdlePause{7'000};
inline constexpr Time kLongestIdlePause{13'000};

// How long a character has idled when it passes to the next level.
inline constexpr Time kSecondIdleLevel{60'000};
inline constexpr Time kThirdIdleLevel{180'000};

// Decides what a character does to pass the time, and when.
class Idling {
public:
    // A character without idle animations never idles. A level without animations is served by the one
    // before.
    Idling(const acs::CharacterFile& file, Random random);

    // Something was asked of the character, or is still going on. True when that ended a spell of idling.
    bool Interrupt(Time now);

    // When the next animation is to begin, if nothing interrupts; kNever without idle animations.
    Time DueAt() const { return dueAt_; }

    // Which it is. Call it when it is due.
    const acs::Animation& Choose(Time now);

    // The animation chosen last has ended.
    void Pause(Time now);

    // From the first animation to the next interruption.
    bool Active() const { return idleSince_.has_value(); }

private:
    std::array<std::vector<const acs::Animation*>, 3> levels_;
    Random random_;
    Time dueAt_ = kNever;
    std::optional<Time> idleSince_;
};

} // namespace voxtrel::agent::stage
