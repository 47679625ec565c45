#include "agent/control_choice.h"

#include "agent/lasting_character.h"

#include <map>
#include <string>
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

// The system's control; our own holds the characters that it cannot load or has left behind.
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
        if (loaded.code == ErrorCode::CharacterAlreadyLoaded)
            return loaded;
        Character* const character = loaded.Ok() ? system_->Find(id) : nullptr;
        if (!character)
            return Embedded().Load(id, path);
        const auto replace = [this, name = std::wstring(id), file = std::wstring(path)](Character& lost) {
            return LoadAnew(name, file, lost);
        };
        inSystem_[character] = std::make_unique<LastingCharacter>(*character, replace);
        return loaded;
    }

    Result Unload(std::wstring_view id) override
    {
        if (embedded_ && embedded_->Find(id)) {
            replaced_.erase(embedded_->Find(id));
            return embedded_->Unload(id);
        }
        inSystem_.erase(system_->Find(id));
        return system_->Unload(id);
    }

    Character* Find(std::wstring_view id) override
    {
        Character* const ours = embedded_ ? embedded_->Find(id) : nullptr;
        const auto replaced = replaced_.find(ours);
        if (replaced != replaced_.end())
            return replaced->second.get();
        const auto found = inSystem_.find(system_->Find(id));
        return found != inSystem_.end() ? found->second.get() : ours;
    }

    void SetEvents(ControlEvents* events) override
    {
        events_ = events;
        system_->SetEvents(events);
        if (embedded_)
            embedded_->SetEvents(events);
    }

private:
    using LastingCharacters = std::map<Character*, std::unique_ptr<LastingCharacter>>;

    Control& Embedded()
    {
        if (!embedded_) {
            embedded_ = MakeEmbedded(makers_);
            embedded_->SetEvents(events_);
        }
        return *embedded_;
    }

    // The character that the system's control has left behind, in our own control; null if it cannot be
    // loaded.
    Character* LoadAnew(const std::wstring& id, const std::wstring& path, Character& lost)
    {
        if (!Embedded().Load(id, path).Ok())
            return nullptr;
        Character* const character = embedded_->Find(id);
        TakeOver(*character, lost);
        replaced_[character] = std::move(inSystem_.at(&lost));
        inSystem_.erase(&lost);
        // One that comes back all the same is not to be seen beside ours.
        Ignore(system_->Unload(id));
        return character;
    }

    std::unique_ptr<Control> system_;
    std::unique_ptr<Control> embedded_; // made when it is needed
    ControlMakers makers_;
    ControlEvents* events_ = nullptr;
    // By the character that each stands for now.
    LastingCharacters inSystem_;
    LastingCharacters replaced_;
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
