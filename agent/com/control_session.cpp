#include "agent/com/control_session.h"

#include "agent/com/control_class.h"

#include <algorithm>
#include <utility>

namespace voxtrel::agent::com {
namespace {

constexpr std::size_t kMostOpenRequests = 200;
// Left, right and middle; the control adds another bit for a click on its tray icon.
constexpr long kButtons = 7;

// A request's Status.
constexpr long kComplete = 0;

Result NotLoaded(const std::wstring& id)
{
    return Result::Failure(ErrorCode::CharacterIdNotValid, L"No character named \"" + id + L"\" is loaded.");
}

Result ResultOfRequest(const LateBound& request)
{
    if (request.Read(L"Status").value.Number().value_or(kComplete) == kComplete)
        return Result::Success();
    const long number = request.Read(L"Number").value.Number().value_or(0);
    const auto code = number != 0 ? static_cast<ErrorCode>(number) : ErrorCode::InterruptedByApplication;
    return Result::Failure(code, request.Read(L"Description").value.Text().value_or(L""));
}

} // namespace

Result ControlSession::Open()
{
    CLSID classId = kControlClass;
    CLSIDFromProgID(kControlName, &classId);
    ComPointer<IDispatch> control;
    const HRESULT made = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                          IID_IDispatch, control.ReceiveVoid());
    if (FAILED(made))
        return FailureOf(made);
    control_ = LateBound(std::move(control));
    Result connected = control_.Write(L"Connected", true);
    if (!connected.Ok())
        return connected;
    Answer characters = control_.Read(L"Characters");
    if (!characters.result.Ok())
        return characters.result;
    characters_ = LateBound(characters.value.Object());
    listener_.Open(
        *control_.Get(), FindEventSource(*control_.Get(), classId),
        [this](std::wstring_view name, const EventArguments& arguments) { HandleEvent(name, arguments); });
    return Result::Success();
}

void ControlSession::Close()
{
    listener_.Close();
    while (!loaded_.empty())
        Ignore(Unload(loaded_.back().id));
    requests_.clear();
    characters_ = {};
    control_ = {};
}

Result ControlSession::Load(const std::wstring& id, const std::wstring& path)
{
    Result loaded = characters_.Call(L"Load", {id, path}).result;
    Loaded entry{id, {}, {}};
    if (loaded.Ok())
        loaded = Find(id, entry.character);
    if (!loaded.Ok()) {
        // The identifier stays occupied by what could not be loaded.
        Ignore(characters_.Call(L"Unload", {id}).result);
        return loaded;
    }
    entry.balloon = LateBound(entry.character.Read(L"Balloon").value.Object());
    loaded_.push_back(std::move(entry));
    return loaded;
}

Result ControlSession::Find(const std::wstring& id, LateBound& character)
{
    Answer found = characters_.Call(L"Character", {id});
    if (!found.result.Ok())
        found = characters_.Item(id);
    character = LateBound(found.value.Object());
    if (found.result.Ok() && !character)
        return NotLoaded(id);
    return found.result;
}

Result ControlSession::Unload(const std::wstring& id)
{
    const auto place =
        std::find_if(loaded_.begin(), loaded_.end(), [&](const Loaded& entry) { return entry.id == id; });
    if (place == loaded_.end())
        return NotLoaded(id);
    loaded_.erase(place);
    requests_.clear();
    Result unloaded = characters_.Call(L"Unload", {id}).result;
    events_->WithdrawBookmarks();
    return unloaded;
}

const ControlSession::Loaded* ControlSession::LoadedAs(const std::wstring& id) const
{
    const auto place =
        std::find_if(loaded_.begin(), loaded_.end(), [&](const Loaded& entry) { return entry.id == id; });
    return place == loaded_.end() ? nullptr : &*place;
}

Result ControlSession::PartOf(const std::wstring& id, Part part, const LateBound*& found) const
{
    const Loaded* const loaded = LoadedAs(id);
    if (!loaded)
        return NotLoaded(id);
    found = part == Part::Balloon ? &loaded->balloon : &loaded->character;
    if (!*found)
        return Result::Failure(ErrorCode::NoBalloon, L"The character has no word balloon.");
    return Result::Success();
}

Answer ControlSession::Read(const std::wstring& id, Part part, const wchar_t* property) const
{
    const LateBound* object = nullptr;
    Result found = PartOf(id, part, object);
    return found.Ok() ? object->Read(property) : Answer{std::move(found), {}};
}

Result ControlSession::Write(const std::wstring& id, Part part, const wchar_t* property,
                             const Argument& value) const
{
    const LateBound* object = nullptr;
    Result found = PartOf(id, part, object);
    return found.Ok() ? object->Write(property, value) : found;
}

Result ControlSession::Request(const std::wstring& id, const wchar_t* method,
                               const std::vector<Argument>& arguments, std::wstring name)
{
    const LateBound* character = nullptr;
    Result found = PartOf(id, Part::Character, character);
    if (!found.Ok())
        return found;
    beingAsked_ = name;
    const Answer asked = character->Call(method, arguments);
    beingAsked_.clear();
    if (auto request = As<IUnknown>(asked.value.Object().Get()))
        requests_.push_back({std::move(request), std::move(name)});
    if (requests_.size() > kMostOpenRequests)
        requests_.erase(requests_.begin());
    return asked.result;
}

Result ControlSession::StopAll(const std::wstring& id)
{
    const LateBound* character = nullptr;
    Result found = PartOf(id, Part::Character, character);
    if (!found.Ok())
        return found;
    Result stopped = character->Call(L"StopAll").result;
    // What the server had sent before it stopped lies among this thread's messages.
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
    events_->WithdrawBookmarks();
    return stopped;
}

void ControlSession::HandleEvent(std::wstring_view name, const EventArguments& arguments)
{
    if (name == L"bookmark")
        events_->AddBookmark(arguments.Number(0));
    else if (name == L"click")
        HandlePointer(&ControlEvents::Click, arguments);
    else if (name == L"dblclick")
        HandlePointer(&ControlEvents::DblClick, arguments);
    else if (name == L"dragstart")
        HandlePointer(&ControlEvents::DragStart, arguments);
    else if (name == L"dragcomplete")
        HandlePointer(&ControlEvents::DragComplete, arguments);
    else if (name == L"requeststart")
        HandleRequest(false, arguments);
    else if (name == L"requestcomplete")
        HandleRequest(true, arguments);
    else if (name == L"balloonshow")
        events_->Add([](ControlEvents& client) { client.BalloonShow(); });
    else if (name == L"balloonhide")
        events_->Add([](ControlEvents& client) { client.BalloonHide(); });
    else if (name == L"idlestart")
        events_->Add([](ControlEvents& client) { client.IdleStart(); });
    else if (name == L"idlecomplete")
        events_->Add([](ControlEvents& client) { client.IdleComplete(); });
}

void ControlSession::HandlePointer(void (ControlEvents::*event)(const PointerEvent&),
                                   const EventArguments& arguments)
{
    PointerEvent pointer;
    pointer.characterId = arguments.Text(0);
    pointer.button = static_cast<int>(arguments.Number(1) & kButtons);
    pointer.shift = static_cast<int>(arguments.Number(2));
    pointer.x = arguments.Number(3);
    pointer.y = arguments.Number(4);
    events_->Add([event, pointer](ControlEvents& client) { (client.*event)(pointer); });
}

void ControlSession::HandleRequest(bool complete, const EventArguments& arguments)
{
    const LateBound request(arguments.Object(0));
    const auto identity = As<IUnknown>(request.Get());
    const auto known = std::find_if(requests_.begin(), requests_.end(), [&](const OpenRequest& open) {
        return open.object.Get() == identity.Get();
    });
    // A control that tells of a request from inside the call that makes it comes before its object.
    std::wstring name = known != requests_.end() ? known->name : beingAsked_;
    if (!complete) {
        events_->Add([name = std::move(name)](ControlEvents& client) { client.RequestStart(name); });
        return;
    }
    if (known != requests_.end())
        requests_.erase(known);
    events_->Add([name = std::move(name), result = ResultOfRequest(request)](ControlEvents& client) {
        client.RequestComplete(name, result);
    });
}

} // namespace voxtrel::agent::com
