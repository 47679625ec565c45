#include "agent/system_control.h"

#include "agent/com/control_class.h"
#include "agent/com/system_character.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace voxtrel::agent {
namespace com {
namespace {

bool SameName(std::wstring_view a, std::wstring_view b)
{
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

// Tells the trace what it hands on to the client.
class TracedEvents final : public ControlEvents {
public:
    explicit TracedEvents(stage::Trace trace) : trace_(std::move(trace)) {}

    void Bookmark(std::int32_t number) override
    {
        Tell("bookmark", {}, number);
        client->Bookmark(number);
    }
    void Click(const PointerEvent& event) override { client->Click(event); }
    void DblClick(const PointerEvent& event) override { client->DblClick(event); }
    void DragStart(const PointerEvent& event) override { client->DragStart(event); }
    void DragComplete(const PointerEvent& event) override { client->DragComplete(event); }
    void RequestStart(std::wstring_view request) override
    {
        Tell("request-start", request);
        client->RequestStart(request);
    }
    void RequestComplete(std::wstring_view request, const Result& result) override
    {
        Tell("request-complete", request, static_cast<std::int64_t>(result.code));
        client->RequestComplete(request, result);
    }
    void BalloonShow() override
    {
        Tell("balloon-show");
        client->BalloonShow();
    }
    void BalloonHide() override
    {
        Tell("balloon-hide");
        client->BalloonHide();
    }
    void IdleStart() override { client->IdleStart(); }
    void IdleComplete() override { client->IdleComplete(); }

    ControlEvents* client = nullptr; // not null when an event comes

private:
    void Tell(std::string_view event, std::wstring_view text = {}, std::int64_t number = 0) const
    {
        if (trace_)
            trace_({event, text, number});
    }

    stage::Trace trace_;
};

class SystemControl final : public Control {
public:
    explicit SystemControl(SystemControlOptions options)
        : traced_(std::move(options.trace)), events_(std::make_shared<ClientEvents>(std::move(options.post))),
          home_{std::make_shared<Apartment>(), std::make_shared<ControlSession>(events_)}
    {
    }

    ~SystemControl() override
    {
        events_->SetClient(nullptr);
        // The task holds the session as long as the control hangs: its objects never leave their thread.
        home_.apartment->Post([session = std::move(home_.session)] { session->Close(); });
    }

    Result Open()
    {
        return home_.Tell([](ControlSession& session) { return session.Open(); }, kLoadingTime);
    }

    Result Load(std::wstring_view id, std::wstring_view path) override
    {
        const std::wstring name(id);
        if (Find(id))
            return Result::Failure(ErrorCode::CharacterAlreadyLoaded,
                                   L"The character \"" + name + L"\" is loaded already.");
        Result loaded = home_.Tell(
            [name, file = std::wstring(path)](ControlSession& session) { return session.Load(name, file); },
            kLoadingTime);
        if (loaded.code == ErrorCode::NoAnswer)
            home_.apartment->Post([session = home_.session, name] { Ignore(session->Unload(name)); });
        if (!loaded.Ok())
            return loaded;
        characters_.push_back(std::make_unique<SystemCharacter>(home_, name));
        if (lastPlace_) {
            Ignore(characters_.back()->SetTop(lastPlace_->top));
            Ignore(characters_.back()->SetLeft(lastPlace_->left));
        }
        return loaded;
    }

    Result Unload(std::wstring_view id) override
    {
        const auto found = Place(id);
        if (found == characters_.end())
            return Result::Failure(ErrorCode::CharacterIdNotValid,
                                   L"No character named \"" + std::wstring(id) + L"\" is loaded.");
        lastPlace_ = ScreenPlace{(*found)->Top(), (*found)->Left()};
        const std::wstring name = (*found)->Id();
        characters_.erase(found);
        return home_.Tell([name](ControlSession& session) { return session.Unload(name); }, kAnswerTime);
    }

    Character* Find(std::wstring_view id) override
    {
        const auto found = Place(id);
        return found == characters_.end() ? nullptr : found->get();
    }

    void SetEvents(ControlEvents* events) override
    {
        traced_.client = events;
        events_->SetClient(events ? &traced_ : nullptr);
    }

private:
    using Characters = std::vector<std::unique_ptr<SystemCharacter>>;
    struct ScreenPlace {
        long top;
        long left;
    };

    Characters::iterator Place(std::wstring_view id)
    {
        return std::find_if(characters_.begin(), characters_.end(),
                            [&](const auto& character) { return SameName(character->Id(), id); });
    }

    TracedEvents traced_;
    std::shared_ptr<ClientEvents> events_;
    SessionHome home_;
    Characters characters_;
    std::optional<ScreenPlace> lastPlace_;
};

} // namespace
} // namespace com

bool SystemControlIsRegistered()
{
    CLSID classId;
    return SUCCEEDED(CLSIDFromProgID(com::kControlName, &classId));
}

MadeControl MakeSystemControl(SystemControlOptions options)
{
    auto control = std::make_unique<com::SystemControl>(std::move(options));
    Result opened = control->Open();
    if (!opened.Ok())
        return {nullptr, std::move(opened)};
    return {std::move(control), Result::Success()};
}

} // namespace voxtrel::agent
