#include "ovaccserver/server.h"

#include "screenreading/server_protocol.h"

#include <utility>

namespace voxtrel::ovaccserver {

Server::Server(platform::MousePointer& pointer, Looker::MakeSource makeSource,
               std::function<void(std::string_view)> write)
    : pointer_(pointer), write_(std::move(write)),
      looker_(std::move(makeSource), [this](Answer answer) { letters_.Post(std::move(answer)); })
{
}

bool Server::Run()
{
    Clock::time_point nextPoll = Clock::now();
    while (abandoned_ <= kMaxAbandoned) {
        const std::optional<Letter> letter = monitoring_ ? letters_.WaitUntil(nextPoll) : letters_.Wait();
        if (letter && Handle(*letter) == Next::End)
            return true;
        const Clock::time_point now = Clock::now();
        if (!monitoring_ || now < nextPoll)
            continue;
        Watch(now);
        nextPoll = now + (watch_.RestsLong(now) ? kRestingPoll : kPoll);
    }
    return false;
}

Server::Next Server::Handle(const Letter& letter)
{
    if (std::holds_alternative<EndOfInput>(letter))
        return Next::End;
    if (const auto* command = std::get_if<Command>(&letter))
        Obey(command->line);
    else
        Take(std::get<Answer>(letter));
    return Next::GoOn;
}

void Server::Obey(std::string_view command)
{
    if (command == screenreading::kStart) {
        monitoring_ = true;
        watch_.Restart();
        reported_.reset();
    } else if (command == screenreading::kStop) {
        monitoring_ = false;
    }
}

void Server::Take(const Answer& answer)
{
    // Only the last look counts: those before it were given up.
    if (answer.look != look_ || !lookingSince_)
        return;
    lookingSince_.reset();
    watch_.Looked(answer.object.has_value() && !overdue_, Clock::now());
    if (monitoring_)
        Report(answer.object.value_or(platform::AccessibleObject{}));
}

void Server::Watch(Clock::time_point now)
{
    const std::optional<platform::PointerState> pointer = pointer_.State();
    const bool wantsLook = pointer && watch_.WantsLook(*pointer, now);
    if (lookingSince_) {
        WaitForLook(now);
    } else if (wantsLook) {
        lookingSince_ = now;
        overdue_ = false;
        looker_.Look(++look_, pointer->point, kDeadline);
    }
    if (now - written_ >= kSignOfLife)
        Write(std::string(screenreading::kAlive) + "\n");
}

void Server::WaitForLook(Clock::time_point now)
{
    if (now - *lookingSince_ > kPatience) {
        looker_.Abandon();
        ++abandoned_;
        lookingSince_.reset();
        watch_.Looked(false, now);
    } else if (!overdue_ && now - *lookingSince_ > kDeadline) {
        overdue_ = true;
        Report({});
    }
}

void Server::Report(const platform::AccessibleObject& object)
{
    if (reported_ == object)
        return;
    reported_ = object;
    Write(screenreading::EncodeObject(object));
}

void Server::Write(std::string_view line)
{
    write_(line);
    written_ = Clock::now();
}

} // namespace voxtrel::ovaccserver
