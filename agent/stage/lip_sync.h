#pragma once

#include "agent/acs/character_file.h"

namespace voxtrel::agent::stage {

// Whether a character can speak in this frame.
bool HasMouths(const acs::Frame& frame);

// The overlay that shows the mouth, or the nearest one that the frame has; null when there is none.
const acs::MouthOverlay* OverlayFor(const acs::Frame& frame, acs::Mouth mouth);

} // namespace voxtrel::agent::stage
