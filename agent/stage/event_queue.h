#pragma once

#include "agent/control.h"

#include <deque>
#include <functional>

namespace voxtrel::agent::stage {

// Events on their way to the client. They are delivered from the tick and never from inside a call.
class EventQueue {
public:
    using Delivery = std::function<void(ControlEvents&)>;

    void Post(Delivery event) { events_.push_back({nullptr, std::move(event)}); }

    // A bookmark of what speaker says; it can be withdrawn until it is delivered.
    void PostBookmark(const void* speaker, std::int32_t number);
    void WithdrawBookmarks(const void* speaker);

    bool Empty() const { return events_.empty(); }

    // Delivers what is waiting now; what is posted meanwhile waits for the next time. client may be null. The
    // handlers may call anything, this function too.
    void Deliver(ControlEvents* const& client);

private:
    struct Event {
        const void* speaker = nullptr; // of a bookmark
        Delivery deliver;
    };
    std::deque<Event> events_;
};

} // namespace voxtrel::agent::stage
