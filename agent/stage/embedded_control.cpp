#include "agent/stage/embedded_control.h"

#include "agent/stage/names.h"

#include <algorithm>
#include <utility>

namespace voxtrel::agent::stage {
namespace {

Result AlreadyLoaded(std::wstring_view id)
{
    return Result::Failure(ErrorCode::CharacterAlreadyLoaded,
                           L"The character \"" + std::wstring(id) + L"\" is loaded already.");
}

} // namespace

EmbeddedControl::EmbeddedControl(ControlParts parts)
    : parts_(std::move(parts)), stage_{*parts_.view,  *parts_.engine, events_,
                                       parts_.random, parts_.trace,   parts_.balloonText}
{
    parts_.view->Drive(this);
}

EmbeddedControl::~EmbeddedControl() { parts_.view->Drive(nullptr); }

Result EmbeddedControl::Load(std::wstring_view id, std::wstring_view path)
{
    if (Find(id) != nullptr)
        return AlreadyLoaded(id);
    acs::ReadOutcome read = parts_.loadCharacter(path);
    if (!read.result.Ok())
        return read.result;
    const bool known = std::any_of(characters_.begin(), characters_.end(), [&](const auto& character) {
        return character->Guid() == read.character.guid;
    });
    if (known)
        return AlreadyLoaded(id);
    characters_.push_back(
        std::make_unique<StageCharacter>(stage_, std::wstring(id), std::move(read.character)));
    Ignore(characters_.back()->SetTop(lastTop_));
    Ignore(characters_.back()->SetLeft(lastLeft_));
    return Result::Success();
}

Result EmbeddedControl::Unload(std::wstring_view id)
{
    const auto found = std::find_if(characters_.begin(), characters_.end(),
                                    [&](const auto& character) { return SameName(character->Id(), id); });
    if (found == characters_.end())
        return Result::Failure(ErrorCode::CharacterIdNotValid,
                               L"No character named \"" + std::wstring(id) + L"\" is loaded.");
    lastTop_ = (*found)->Top();
    lastLeft_ = (*found)->Left();
    characters_.erase(found);
    return Result::Success();
}

Character* EmbeddedControl::Find(std::wstring_view id)
{
    const auto found = std::find_if(characters_.begin(), characters_.end(),
                                    [&](const auto& character) { return SameName(character->Id(), id); });
    return found == characters_.end() ? nullptr : found->get();
}

// Handlers may load and unload characters: events are delivered when no character is at work.
void EmbeddedControl::Tick()
{
    const Time now = parts_.view->Now();
    for (const auto& character : characters_)
        character->Tick(now);
    events_.Deliver(client_);
}

Time EmbeddedControl::NextTick() const
{
    Time next = events_.Empty() ? kNever : Time::zero();
    for (const auto& character : characters_)
        next = std::min(next, character->NextTick());
    return next;
}

} // namespace voxtrel::agent::stage
