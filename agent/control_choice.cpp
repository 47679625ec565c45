#include "agent/control_choice.h"

#include <utility>

namespace voxtrel::agent {
namespace {

void Tell(const ControlMakers& makers, std::string_view server)
{
    if (makers.chosen)
        makers.chosen(server);
}

std::unique_ptr<Control> MakeEmbedded(const ControlMakers& makers)
{
    Tell(makers, "embedded");
    return makers.embedded();
}

// The system's control; our own holds the characters that it cannot load.
class SystemThenEmbedded final : public Control {
public:
    SystemThenEmbedded(std::unique_ptr<Control> system, ControlMakers makers)
        : system_(std::move(system)), makers_(std::move(makers))
    {
    }

    Result Load(std::wstring_view id, std::wstring_view path) override
    {
        if (embedded_ && embedded_->Find(id))
            return embedded_->Load(id, path);
        Result loaded = system_->Load(id, path);
        if (loaded.Ok() || loaded.code == ErrorCode::CharacterAlreadyLoaded)
            return loaded;
        if (!embedded_) {
            embedded_ = MakeEmbedded(makers_);
            embedded_->SetEvents(events_);
        }
        return embedded_->Load(id, path);
    }

    Result Unload(std::wstring_view id) override
    {
        return embedded_ && embedded_->Find(id) ? embedded_->Unload(id) : system_->Unload(id);
    }

    Character* Find(std::wstring_view id) override
    {
        Character* const found = system_->Find(id);
        return found || !embedded_ ? found : embedded_->Find(id);
    }

    void SetEvents(ControlEvents* events) override
    {
        events_ = events;
        system_->SetEvents(events);
        if (embedded_)
            embedded_->SetEvents(events);
    }

private:
    std::unique_ptr<Control> system_;
    std::unique_ptr<Control> embedded_; // made when it is needed
    ControlMakers makers_;
    ControlEvents* events_ = nullptr;
};

} // namespace

MadeControl ChooseControl(CharacterServer wanted, const ControlMakers& makers)
{
    const bool forced = wanted == CharacterServer::System;
    if (wanted == CharacterServer::Embedded || (!forced && !makers.systemIsRegistered()))
        return {MakeEmbedded(makers), Result::Success()};
    MadeControl system = makers.system();
    if (!system.control && !forced)
        return {MakeEmbedded(makers), Result::Success()};
    if (!system.control)
        return system;
    Tell(makers, "system");
    if (forced)
        return system;
    return {std::make_unique<SystemThenEmbedded>(std::move(system.control), makers), Result::Success()};
}

} // namespace voxtrel::agent
