#pragma once

#include "agent/acs/character_file.h"

#include <string>

namespace voxtrel::agent::stage {

// Something asked of a character, waiting for its turn or being carried out.
struct Request {
    enum class Kind { Show, Hide, Play, Speak };

    Kind kind = Kind::Show;
    std::wstring name;                         // as the client is told
    const acs::Animation* animation = nullptr; // to be played for it; chosen late for all but Play
    std::wstring markup;                       // of Speak; given away when the speech begins
};

} // namespace voxtrel::agent::stage
