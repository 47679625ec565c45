#include "ovaccserver/pointer_watch.h"

#include <algorithm>
#include <cstdlib>

namespace voxtrel::ovaccserver {

void PointerWatch::Restart() { place_.reset(); }

bool PointerWatch::WantsLook(platform::PointerState pointer, TimePoint now)
{
    const platform::ScreenPoint point = pointer.point;
    const bool moved =
        !place_ || std::abs(point.x - place_->x) > kTremble || std::abs(point.y - place_->y) > kTremble;
    if (moved || pointer.pressed) {
        place_ = point;
        since_ = now;
        looked_.reset();
        pause_ = {};
    }
    return looked_ ? now - *looked_ >= pause_ : now - since_ >= kRest;
}

void PointerWatch::Looked(bool answered, TimePoint now)
{
    looked_ = now;
    pause_ = answered ? std::clamp(2 * pause_, kFirstPause, kLongestPause)
                      : std::clamp(2 * pause_, kFirstPauseUnanswered, kLongestPauseUnanswered);
}

} // namespace voxtrel::ovaccserver
