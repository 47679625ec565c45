#pragma once

#include "agent/control.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace voxtrel::agent::com {

// Events on their way from the control's thread to the client's.
class ClientEvents : public std::enable_shared_from_this<ClientEvents> {
public:
    // Runs a function on the client's thread later, in order; may be called on any thread.
    using Post = std::function<void(std::function<void()>)>;

    explicit ClientEvents(Post post) : post_(std::move(post)) {}

    // On the client's thread.
    void SetClient(ControlEvents* client) { client_ = client; }

    // On any thread. What has not been delivered when this object goes never is.
    void Add(std::function<void(ControlEvents&)> event);
    void AddBookmark(std::int32_t number);

    // No bookmark that was added before is delivered afterwards.
    void WithdrawBookmarks() { ++utterances_; }

private:
    Post post_;
    ControlEvents* client_ = nullptr;
    std::atomic<std::uint32_t> utterances_ = 0; // what was being said when a bookmark was added
};

} // namespace voxtrel::agent::com
