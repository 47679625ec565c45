#pragma once

#include "agent/stage/stage_view.h"
#include "agent/view/character_window.h"

#include <memory>

namespace voxtrel::agent::view {

struct ViewOptions {
    MenuHook menu; // on a right click; may be empty
};

// The stage on the user's desktop. wx must be running.
std::unique_ptr<stage::StageView> MakeStageView(ViewOptions options);

} // namespace voxtrel::agent::view
