#pragma once

#include "ovaccserver/looker.h"
#include "ovaccserver/mailbox.h"
#include "ovaccserver/pointer_watch.h"
#include "platform/accessible_source.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace voxtrel::ovaccserver {

// The server's one thread of thought: takes the program's commands, watches the pointer while it is told to,
// and writes what the pointer rests on.
//
// While monitoring it wakes every kPoll, and every kRestingPoll when the pointer has rested for a while. A rest of the
// pointer starts a look; the answer is written when it is another object than the one before. A look that takes longer
// than kDeadline counts as having found nothing, and one that takes longer than kPatience is given up with its thread.
class Server {
public:
    using Clock = std::chrono::steady_clock;

    struct Command {
        std::string line;
    };
    struct EndOfInput {};
    using Letter = std::variant<Command, EndOfInput, Answer>;

    // write takes whole lines of the protocol.
    Server(platform::MousePointer& pointer, Looker::MakeSource makeSource,
           std::function<void(std::string_view)> write);

    // From any thread.
    Mailbox<Letter>& Letters() { return letters_; }

    // Works until the end of the input. False when it gives up because too many looks never came back.
    bool Run();

    static constexpr std::chrono::milliseconds kPoll{30};
    static constexpr std::chrono::milliseconds kRestingPoll{60};
    static constexpr std::chrono::milliseconds kDeadline{400};
    static constexpr std::chrono::milliseconds kPatience{3000};
    static constexpr std::chrono::milliseconds kSignOfLife{1000};
    static constexpr int kMaxAbandoned = 8;

private:
    enum class Next { GoOn, End };

    Next Handle(const Letter& letter);
    void Obey(std::string_view command);
    void Take(const Answer& answer);
    void Watch(Clock::time_point now);
    void WaitForLook(Clock::time_point now);
    void Report(const platform::AccessibleObject& object);
    void Write(std::string_view line);

    platform::MousePointer& pointer_;
    std::function<void(std::string_view)> write_;
    Mailbox<Letter> letters_;
    Looker looker_;
    PointerWatch watch_;

    bool monitoring_ = false;
    int look_ = 0; // the number of the last one
    std::optional<Clock::time_point> lookingSince_;
    bool overdue_ = false; // the look in hand has missed its deadline
    int abandoned_ = 0;
    std::optional<platform::AccessibleObject> reported_;
    Clock::time_point written_;
};

} // namespace voxtrel::ovaccserver
