#include "agent/stage/event_queue.h"

#include <utility>

namespace voxtrel::agent::stage {

void EventQueue::PostBookmark(const void* speaker, std::int32_t number)
{
    events_.push_back({speaker, [number](ControlEvents& client) { client.Bookmark(number); }});
}

void EventQueue::WithdrawBookmarks(const void* speaker)
{
    std::erase_if(events_, [&](const Event& event) { return event.speaker == speaker; });
}

void EventQueue::Deliver(ControlEvents* const& client)
{
    for (std::size_t waiting = events_.size(); waiting > 0 && !events_.empty(); --waiting) {
        const Event event = std::move(events_.front());
        events_.pop_front();
        if (client != nullptr)
            event.deliver(*client);
    }
}

} // namespace voxtrel::agent::stage
