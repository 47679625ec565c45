#pragma once

#include "agent/com/client_events.h"
#include "agent/com/event_source.h"
#include "agent/com/late_bound.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::com {

// The system's control with the characters that are loaded in it. Everything here belongs to one apartment:
// it is called on its thread and closed there.
class ControlSession {
public:
    explicit ControlSession(std::shared_ptr<ClientEvents> events) : events_(std::move(events)) {}

    // Makes the control and connects it to its server. Without descriptions of its events it works without
    // them.
    Result Open();
    // Takes everything back; what is called afterwards fails.
    void Close();

    Result Load(const std::wstring& id, const std::wstring& path);
    Result Unload(const std::wstring& id);

    enum class Part { Character, Balloon };
    Answer Read(const std::wstring& id, Part part, const wchar_t* property) const;
    Result Write(const std::wstring& id, Part part, const wchar_t* property, const Argument& value) const;

    // A method that is queued; name is what the client is told when it begins and ends.
    Result Request(const std::wstring& id, const wchar_t* method, const std::vector<Argument>& arguments,
                   std::wstring name);
    Result StopAll(const std::wstring& id);

private:
    struct Loaded {
        std::wstring id;
        LateBound character;
        LateBound balloon;
    };
    // Kept until it is complete: the control tells nothing about a request that nobody holds.
    struct OpenRequest {
        ComPointer<IUnknown> object;
        std::wstring name;
    };

    Result Find(const std::wstring& id, LateBound& character);
    const Loaded* LoadedAs(const std::wstring& id) const;
    Result PartOf(const std::wstring& id, Part part, const LateBound*& found) const;

    void HandleEvent(std::wstring_view name, const EventArguments& arguments);
    void HandleRequest(bool complete, const EventArguments& arguments);
    void HandlePointer(void (ControlEvents::*event)(const PointerEvent&), const EventArguments& arguments);

    std::shared_ptr<ClientEvents> events_;
    LateBound control_;
    LateBound characters_;
    std::vector<Loaded> loaded_;
    std::vector<OpenRequest> requests_;
    std::wstring beingAsked_; // the name of the request that is just being made
    EventListener listener_;
};

} // namespace voxtrel::agent::com
