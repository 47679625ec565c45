#pragma once

#include "agent/stage/picture.h"

namespace voxtrel::agent::stage {

// The picture at another size, each side at least 1: colours are filtered smoothly, the outline stays hard.
Picture Scale(const Picture& picture, Size size);

} // namespace voxtrel::agent::stage
