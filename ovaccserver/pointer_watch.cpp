#include "ovaccserver/pointer_watch.h"

#include <algorithm>
#include <cstdlib>

namespace voxtrel::ovaccserver {

void PointerWatch::Restart() { place_.reset(); }

bool PointerWatch::WantsLook(platform::ScreenPoint point, TimePoint now)
{
    const bool moved =
        !place_ || std::abs(point.x - place_->x) > kTremble || std::abs(point.y - place_->y) > kTremble;
    if (moved) {
        place_ = point;
        since_ = now;
        looked_.reset();
        again_ = {};
    }
    return looked_ ? now - *looked_ >= again_ : now - since_ >= kRest;
}

void PointerWatch::Looked(bool answered, TimePoint now)
{
    const bool first = !looked_;
    looked_ = now;
    if (!answered)
        again_ = std::clamp(again_ * 2, 2 * kAgain, kAgainAtMost);
    else
        again_ = first ? kSoonAgain : kAgain;
}

} // namespace voxtrel::ovaccserver
