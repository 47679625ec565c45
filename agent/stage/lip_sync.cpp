#include "agent/stage/lip_sync.h"

#include <algorithm>
#include <array>
#include <span>

namespace voxtrel::agent::stage {
namespace {

using acs::Mouth;

// What stands in for a mouth that is not drawn, best first; each list begins with the mouth itself.
std::span<const Mouth> Candidates(Mouth mouth)
{
    static constexpr std::array kClosed{Mouth::Closed};
    static constexpr std::array kOpen{Mouth::Fully, Mouth::Open, Mouth::Partly, Mouth::Slight};
    static constexpr std::array kMedium{Mouth::Medium, Mouth::Narrow, Mouth::Open};
    static constexpr std::array kNarrow{Mouth::Narrow, Mouth::Medium, Mouth::Slight};

    switch (mouth) {
    case Mouth::Closed:
        return kClosed;
    case Mouth::Fully:
        return kOpen;
    case Mouth::Open:
        return std::span(kOpen).subspan(1);
    case Mouth::Partly:
        return std::span(kOpen).subspan(2);
    case Mouth::Slight:
        return std::span(kOpen).subspan(3);
    case Mouth::Medium:
        return kMedium;
    case Mouth::Narrow:
        return kNarrow;
    }
    return {};
}

} // namespace

bool HasMouths(const acs::Frame& frame) { return !frame.mouths.empty(); }

const acs::MouthOverlay* OverlayFor(const acs::Frame& frame, Mouth mouth)
{
    for (const Mouth candidate : Candidates(mouth)) {
        const auto overlay = std::find_if(frame.mouths.begin(), frame.mouths.end(),
                                          [&](const acs::MouthOverlay& o) { return o.mouth == candidate; });
        if (overlay != frame.mouths.end())
            return &*overlay;
    }
    return nullptr;
}

} // namespace voxtrel::agent::stage
