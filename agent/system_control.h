#pragma once

#include "agent/control.h"
#include "agent/stage/trace.h"

#include <functional>
#include <memory>

// The character control that some systems bring along, behind the same interface as our own.
namespace voxtrel::agent {

struct SystemControlOptions {
    // Runs a function on the calling thread later, from its message loop, in order. Called from any thread.
    std::function<void(std::function<void()>)> post;
    // Requests, bookmarks and the balloon, as far as the control tells of them.
    stage::Trace trace;
};

struct MadeControl {
    std::unique_ptr<Control> control; // null unless result is a success
    Result result;
};

// Whether the system says that it has such a control; making it may fail all the same.
bool SystemControlIsRegistered();

// Makes the system's control. It works in a thread of its own; no call on it takes longer than five seconds
// (loading something) or one second (anything else), whatever the control does. A call that was not answered
// in time fails and may still be carried out.
MadeControl MakeSystemControl(SystemControlOptions options);

} // namespace voxtrel::agent
