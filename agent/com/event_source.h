#pragma once

#include "agent/com/late_bound.h"

#include <ocidl.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::com {

// An object's default source of events, as its type information describes it.
struct EventSource {
    IID interfaceId = IID_NULL;
    std::map<DISPID, std::wstring> names; // lower case

    bool Known() const { return !names.empty(); }
};

// classId: the class that object is of, for objects that describe themselves but not their class.
EventSource FindEventSource(IDispatch& object, const CLSID& classId);

// What an event brings along, in the order of its declaration.
class EventArguments {
public:
    explicit EventArguments(const DISPPARAMS& parameters) : parameters_(parameters) {}

    // Arguments that are missing or of another kind are 0, empty, null.
    long Number(std::size_t index) const;
    std::wstring Text(std::size_t index) const;
    ComPointer<IDispatch> Object(std::size_t index) const;

private:
    Value At(std::size_t index) const;

    const DISPPARAMS& parameters_;
};

// Listens to an object's events from its making until Close.
class EventListener {
public:
    using Handler = std::function<void(std::wstring_view name, const EventArguments& arguments)>;

    EventListener() = default;
    ~EventListener() { Close(); }
    EventListener(const EventListener&) = delete;
    EventListener& operator=(const EventListener&) = delete;

    // False when the object has no such source. handler runs on this thread, from the message loop or from
    // inside a call of the object.
    bool Open(IUnknown& object, EventSource source, Handler handler);
    void Close();

private:
    ComPointer<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

} // namespace voxtrel::agent::com
