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
        again_ = kAgain;
    }
    return looked_ ? now - *looked_ >= again_ : now - since_ >= kRest;
}

void PointerWatch::Looked(bool answered, TimePoint now)
{
    looked_ = now;
    again_ = answered ? kAgain : std::min(again_ * 2, kAgainAtMost);
}

} // namespace voxtrel::ovaccserver
