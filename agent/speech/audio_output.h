#pragma once

#include "agent/speech/playback.h"

namespace voxtrel::agent::speech {

// A sound device. Opening and closing it takes time and goes on beside the caller.
class AudioOutput {
public:
    enum class State {
        Closed,
        Opening,
        Playing, // pulls from the source all the time
        Failed,  // there is no device, or it does not play
    };

    virtual ~AudioOutput() = default;

    // Asks for a device that plays what source has. Harmless when it is open. After a failure it is tried
    // again, but not at once.
    virtual void Open() = 0;

    // The source is left alone from now on.
    virtual void Close() = 0;

    // As Close, for a device that has stopped playing: counts as a failure.
    virtual void GiveUp() = 0;

    virtual State CurrentState() const = 0;
};

} // namespace voxtrel::agent::speech
