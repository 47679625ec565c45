#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace voxtrel::ovaccserver {

// Letters from several threads to one.
template <class Letter> class Mailbox {
public:
    void Post(Letter letter)
    {
        {
            const std::lock_guard lock(mutex_);
            letters_.push_back(std::move(letter));
        }
        arrived_.notify_one();
    }

    // The oldest letter; nothing when none has come until then.
    std::optional<Letter> WaitUntil(std::chrono::steady_clock::time_point end)
    {
        std::unique_lock lock(mutex_);
        if (!arrived_.wait_until(lock, end, [this] { return !letters_.empty(); }))
            return std::nullopt;
        return TakeFirst();
    }

    Letter Wait()
    {
        std::unique_lock lock(mutex_);
        arrived_.wait(lock, [this] { return !letters_.empty(); });
        return TakeFirst();
    }

private:
    Letter TakeFirst()
    {
        Letter first = std::move(letters_.front());
        letters_.pop_front();
        return first;
    }

    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<Letter> letters_;
};

} // namespace voxtrel::ovaccserver
