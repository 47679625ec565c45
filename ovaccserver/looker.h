#pragma once

#include "ovaccserver/mailbox.h"
#include "platform/accessible_source.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace voxtrel::ovaccserver {

// What one look found: nothing when the program did not answer.
struct Answer {
    int look = 0;
    std::optional<platform::AccessibleObject> object;
};

// Looks on a thread of its own, so that a frozen program under the pointer holds up nobody. A look that does
// not come back is left behind together with its thread.
class Looker {
public:
    using MakeSource = std::function<std::unique_ptr<platform::AccessibleSource>()>;
    // Is called on the looker's thread with each answer.
    using Deliver = std::function<void(Answer)>;

    Looker(MakeSource makeSource, Deliver deliver);
    // The thread ends once it has delivered.
    ~Looker();
    Looker(const Looker&) = delete;
    Looker& operator=(const Looker&) = delete;

    // The answer carries the number of the look.
    void Look(int number, platform::ScreenPoint point, std::chrono::milliseconds deadline);

    // Gives up the look in hand and its thread; the next one gets a new thread.
    void Abandon();

private:
    struct Request {
        int look = 0;
        platform::ScreenPoint point;
        std::chrono::milliseconds deadline{};
    };

    void StartThread();

    MakeSource makeSource_;
    Deliver deliver_;
    std::shared_ptr<Mailbox<std::optional<Request>>> requests_; // an empty one ends the thread
};

} // namespace voxtrel::ovaccserver
