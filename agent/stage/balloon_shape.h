#pragma once

#include "agent/stage/picture.h"
#include "agent/stage/stage_view.h"

namespace voxtrel::agent::stage {

// The screen rectangle that the body takes up together with its wedge.
Rect BalloonBounds(const BalloonPicture& balloon);

// The empty balloon in those bounds: a rounded body with its wedge and a border that is hard outside and
// smooth inside. borderWidth in pixels of the screen; the picture has detail times as many, in each direction.
Picture PaintBalloonShape(const BalloonPicture& balloon, double borderWidth, int detail = 1);

} // namespace voxtrel::agent::stage
