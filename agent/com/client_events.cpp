#include "agent/com/client_events.h"

#include <utility>

namespace voxtrel::agent::com {

void ClientEvents::Add(std::function<void(ControlEvents&)> event)
{
    post_([weak = weak_from_this(), event = std::move(event)] {
        const auto self = weak.lock();
        if (self && self->client_)
            event(*self->client_);
    });
}

void ClientEvents::AddBookmark(std::int32_t number)
{
    post_([weak = weak_from_this(), number, utterance = utterances_.load()] {
        const auto self = weak.lock();
        if (self && self->client_ && self->utterances_ == utterance)
            self->client_->Bookmark(number);
    });
}

} // namespace voxtrel::agent::com
