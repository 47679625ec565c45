#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace voxtrel::agent::com {

// A thread of its own for COM objects that belong to one thread and may never answer. Whoever calls waits,
// with a deadline; while something that missed its deadline is still being done, nobody waits at all.
class Apartment {
public:
    Apartment();
    // Waits a moment for what is left to do; a thread that hangs is left alone, with all that its work holds.
    ~Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

    enum class IfLate {
        StillDo, // it is done when its turn comes
        LeaveOut // it is not done unless it has begun
    };

    // What work gives, or nothing when it misses the deadline. work may run after that: it must own what it
    // uses.
    template <class T>
    std::optional<T> Ask(std::function<T()> work, std::chrono::milliseconds deadline, IfLate ifLate)
    {
        const auto given = std::make_shared<std::optional<T>>();
        if (!Run([work = std::move(work), given] { *given = work(); }, deadline, ifLate))
            return std::nullopt;
        return std::move(*given);
    }

    // For the thread's last work; nobody waits for it.
    void Post(std::function<void()> work);

private:
    struct Task;
    struct Shared;

    // Whether work has ended by the deadline.
    bool Run(std::function<void()> work, std::chrono::milliseconds deadline, IfLate ifLate);

    static void Main(const std::shared_ptr<Shared>& shared);

    std::shared_ptr<Shared> shared_;
};

} // namespace voxtrel::agent::com
