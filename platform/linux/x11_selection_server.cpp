#include "platform/linux/x11_selection_server.h"

#include "settings/text_case.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kPiece = 256 * 1024; // bytes that go in one property
constexpr auto kTransferPatience = 30s;
constexpr std::string_view kSecretHint = "x-kde-passwordManagerHint"; // clipboard histories leave it out
constexpr std::string_view kSecret = "secret";
constexpr std::size_t kMostConversions = 64; // that one request for several may ask for

// For programs that know nothing but Latin-1.
std::string ToLatin1(const std::string& utf8)
{
    const std::wstring text = settings::FromUtf8(utf8);
    std::string latin1(text.size(), '?');
    std::ranges::transform(text, latin1.begin(),
                           [](wchar_t c) { return c < 0x100 ? static_cast<char>(c) : '?'; });
    return latin1;
}

} // namespace

X11SelectionServer::X11SelectionServer(X11Connection& connection, xcb_window_t window)
    : connection_(connection), window_(window)
{
}

void X11SelectionServer::Offer(std::string utf8, xcb_timestamp_t since, History history)
{
    text_ = std::move(utf8);
    since_ = since;
    history_ = history;
    offering_ = true;
}

void X11SelectionServer::Withdraw()
{
    offering_ = false;
    text_.clear();
}

std::vector<xcb_atom_t> X11SelectionServer::Targets()
{
    std::vector<xcb_atom_t> targets;
    for (const std::string_view name : {"TARGETS", "TIMESTAMP", "MULTIPLE", "UTF8_STRING",
                                        "text/plain;charset=utf-8", "text/plain", "TEXT"})
        targets.push_back(connection_.Atom(name));
    targets.push_back(XCB_ATOM_STRING);
    if (history_ == History::KeepOut)
        targets.push_back(connection_.Atom(kSecretHint));
    return targets;
}

void X11SelectionServer::Handle(const xcb_generic_event_t& event)
{
    switch (TypeOf(event)) {
    case XCB_SELECTION_REQUEST:
        Answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        break;
    case XCB_SELECTION_CLEAR: {
        const auto& cleared = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
        // An older ownership may be told to end after a newer one has begun.
        if (cleared.owner == window_ && static_cast<std::int32_t>(cleared.time - since_) >= 0)
            Withdraw();
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (changed.window != window_ && changed.state == XCB_PROPERTY_DELETE)
            SendNextPiece(changed.window, changed.atom);
        break;
    }
    case XCB_DESTROY_NOTIFY:
        ForgetTransfersOf(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
        break;
    default:
        break;
    }
}

void X11SelectionServer::Answer(const xcb_selection_request_event_t& request)
{
    // Obsolete programs name no property and mean the target's name.
    const xcb_atom_t property = request.property != XCB_NONE ? request.property : request.target;
    ForgetStuckTransfers();
    const bool provided = offering_ && request.owner == window_ &&
                          (request.target == connection_.Atom("MULTIPLE")
                               ? ProvideMultiple(request.requestor, property)
                               : Provide(request.requestor, request.target, property));
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request.time;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    answer.property = provided ? property : static_cast<xcb_atom_t>(XCB_NONE);
    xcb_send_event(connection_.Get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&answer));
    xcb_flush(connection_.Get());
}

bool X11SelectionServer::Provide(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property)
{
    if (target == connection_.Atom("TARGETS")) {
        const std::vector<xcb_atom_t> targets = Targets();
        Change(requestor, property, XCB_ATOM_ATOM, 32, targets.size(), targets.data());
    } else if (target == connection_.Atom("TIMESTAMP")) {
        Change(requestor, property, XCB_ATOM_INTEGER, 32, 1, &since_);
    } else if (target == connection_.Atom(kSecretHint) && history_ == History::KeepOut) {
        Change(requestor, property, target, 8, kSecret.size(), kSecret.data());
    } else if (target == XCB_ATOM_STRING) {
        ProvideText(requestor, target, property, ToLatin1(text_));
    } else if (target == connection_.Atom("TEXT")) {
        ProvideText(requestor, connection_.Atom("UTF8_STRING"), property, text_);
    } else if (target == connection_.Atom("UTF8_STRING") || target == connection_.Atom("text/plain") ||
               target == connection_.Atom("text/plain;charset=utf-8")) {
        ProvideText(requestor, target, property, text_);
    } else {
        return false;
    }
    return true;
}

// The property lists pairs of a target and the property that it is to go to.
bool X11SelectionServer::ProvideMultiple(xcb_window_t requestor, xcb_atom_t property)
{
    std::vector<std::uint32_t> pairs =
        connection_.Numbers(requestor, property, connection_.Atom("ATOM_PAIR"));
    if (pairs.empty() || pairs.size() % 2 != 0 || pairs.size() / 2 > kMostConversions)
        return false;
    for (std::size_t i = 0; i < pairs.size(); i += 2) {
        const bool nested = pairs[i] == connection_.Atom("MULTIPLE");
        if (nested || pairs[i + 1] == XCB_NONE || !Provide(requestor, pairs[i], pairs[i + 1]))
            pairs[i + 1] = XCB_NONE;
    }
    Change(requestor, property, connection_.Atom("ATOM_PAIR"), 32, pairs.size(), pairs.data());
    return true;
}

void X11SelectionServer::ProvideText(xcb_window_t requestor, xcb_atom_t type, xcb_atom_t property,
                                     const std::string& text)
{
    if (text.size() <= kPiece) {
        Change(requestor, property, type, 8, text.size(), text.data());
        return;
    }
    connection_.SelectEvents(requestor, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    std::erase_if(transfers_,
                  [&](const Transfer& t) { return t.requestor == requestor && t.property == property; });
    transfers_.push_back({requestor, property, type, text, 0, std::chrono::steady_clock::now()});
    const auto size = static_cast<std::uint32_t>(text.size());
    Change(requestor, property, connection_.Atom("INCR"), 32, 1, &size);
}

void X11SelectionServer::SendNextPiece(xcb_window_t requestor, xcb_atom_t property)
{
    const auto transfer = std::ranges::find_if(
        transfers_, [&](const Transfer& t) { return t.requestor == requestor && t.property == property; });
    if (transfer == transfers_.end())
        return;
    const std::size_t size = std::min(kPiece, transfer->text.size() - transfer->sent);
    Change(requestor, property, transfer->type, 8, size, transfer->text.data() + transfer->sent);
    transfer->sent += size;
    transfer->lastTaken = std::chrono::steady_clock::now();
    // An empty piece says that this was all.
    if (size == 0) {
        transfers_.erase(transfer);
        if (std::ranges::find(transfers_, requestor, &Transfer::requestor) == transfers_.end())
            connection_.SelectEvents(requestor, XCB_EVENT_MASK_NO_EVENT);
    }
    xcb_flush(connection_.Get());
}

void X11SelectionServer::ForgetTransfersOf(xcb_window_t requestor)
{
    std::erase_if(transfers_, [&](const Transfer& t) { return t.requestor == requestor; });
}

void X11SelectionServer::ForgetStuckTransfers()
{
    const auto now = std::chrono::steady_clock::now();
    std::erase_if(transfers_, [&](const Transfer& t) { return now - t.lastTaken > kTransferPatience; });
}

void X11SelectionServer::Change(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                std::uint8_t format, std::size_t count, const void* data)
{
    xcb_change_property(connection_.Get(), XCB_PROP_MODE_REPLACE, window, property, type, format,
                        static_cast<std::uint32_t>(count), data);
}

} // namespace voxtrel::platform
