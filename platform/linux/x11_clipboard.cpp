#include "platform/linux/x11_clipboard.h"

#include "platform/linux/toolkit_clipboard.h"
#include "platform/linux/x11_clipboard_keeper.h"
#include "settings/text_case.h"

#include <xcb/xfixes.h>

#include <utility>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kServerPatience = 1000ms;
constexpr auto kHandOverPatience = 1000ms;
constexpr auto kLookAfterServer = 60'000ms;
constexpr int kPatienceForPieces = 5; // times the patience for one piece
constexpr std::size_t kMostBytes = std::size_t{256} << 20;

Deadline In(std::chrono::milliseconds time) { return std::chrono::steady_clock::now() + time; }

} // namespace

X11Clipboard::X11Clipboard()
{
    if (!connection_.IsOpen())
        return;
    xcb_connection_t* xcb = connection_.Get();
    window_ = xcb_generate_id(xcb);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window_, connection_.Root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    const xcb_query_extension_reply_t* fixes = xcb_get_extension_data(xcb, &xcb_xfixes_id);
    if (fixes && fixes->present) {
        const XcbPtr<xcb_xfixes_query_version_reply_t> version(
            xcb_xfixes_query_version_reply(xcb, xcb_xfixes_query_version(xcb, 1, 0), nullptr));
        fixesEvent_ = fixes->first_event;
        xcb_xfixes_select_selection_input(xcb, window_, connection_.Atom("CLIPBOARD"),
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    server_.emplace(connection_, window_);
    connection_.Sync();
}

X11Clipboard::~X11Clipboard()
{
    if (!connection_.IsOpen() || !server_->IsOffering() || server_->Text().empty())
        return;
    if (OwnerOf(connection_.Atom("CLIPBOARD_MANAGER")) != XCB_NONE)
        HandToManager();
    else if (LeaveClipboardKeeper(server_->Text()))
        AwaitEvent(XCB_SELECTION_CLEAR, In(kHandOverPatience)); // so that there is no moment without an owner
}

void X11Clipboard::ServeRequests()
{
    if (!connection_.IsOpen())
        return;
    while (const XcbEvent event = connection_.PollForEvent())
        Handle(*event);
}

void X11Clipboard::Handle(const xcb_generic_event_t& event)
{
    if (fixesEvent_ != 0 && TypeOf(event) == fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY)
        ++sequence_;
    else
        server_->Handle(event);
}

XcbEvent X11Clipboard::AwaitEvent(std::uint8_t type, Deadline deadline)
{
    for (;;) {
        XcbEvent event = connection_.WaitForEvent(deadline);
        if (!event || TypeOf(*event) == type)
            return event;
        Handle(*event);
    }
}

xcb_timestamp_t X11Clipboard::ServerTime()
{
    if (!connection_.IsOpen())
        return XCB_CURRENT_TIME;
    const xcb_atom_t clock = connection_.Atom("VOXTREL_CLOCK");
    xcb_change_property(connection_.Get(), XCB_PROP_MODE_APPEND, window_, clock, XCB_ATOM_INTEGER, 32, 0,
                        nullptr);
    const Deadline deadline = In(kServerPatience);
    while (const XcbEvent event = AwaitEvent(XCB_PROPERTY_NOTIFY, deadline)) {
        const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
        if (changed.window == window_ && changed.atom == clock)
            return changed.time;
        Handle(*event);
    }
    return XCB_CURRENT_TIME;
}

xcb_window_t X11Clipboard::OwnerOf(xcb_atom_t selection)
{
    const auto cookie = xcb_get_selection_owner(connection_.Get(), selection);
    const XcbPtr<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection_.Get(), cookie, nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
}

std::optional<std::wstring> X11Clipboard::GetText(std::chrono::milliseconds patience)
{
    if (!connection_.IsOpen())
        return std::nullopt;
    const xcb_atom_t clipboard = connection_.Atom("CLIPBOARD");
    const xcb_window_t owner = OwnerOf(clipboard);
    ServeRequests();
    if (owner == XCB_NONE)
        return std::wstring();
    if (owner == window_)
        return settings::FromUtf8(server_->Text());
    // The program's own windows cannot answer while this waits.
    if (std::optional<std::wstring> own = ToolkitClipboardText(owner))
        return own;
    std::optional<std::wstring> text = Read(clipboard, patience);
    ServeRequests();
    return text;
}

std::optional<std::wstring> X11Clipboard::PrimaryTextOf(std::uint32_t client,
                                                        std::chrono::milliseconds patience)
{
    if (!connection_.IsOpen())
        return std::nullopt;
    const xcb_window_t owner = OwnerOf(XCB_ATOM_PRIMARY);
    if (owner == XCB_NONE || connection_.ClientOf(owner) != client)
        return std::nullopt;
    std::optional<std::wstring> text = Read(XCB_ATOM_PRIMARY, patience);
    ServeRequests();
    return text;
}

std::optional<std::wstring> X11Clipboard::Read(xcb_atom_t selection, std::chrono::milliseconds patience)
{
    patience_ = patience;
    for (const std::string_view target : {"UTF8_STRING", "text/plain;charset=utf-8", "STRING"}) {
        Answer answer = Convert(selection, connection_.Atom(target), In(patience));
        if (answer.kind == Answer::Kind::TimedOut)
            return std::nullopt;
        if (answer.kind == Answer::Kind::Refused)
            continue;
        if (target != "STRING")
            return settings::FromUtf8(answer.bytes);
        std::wstring text;
        for (const char c : answer.bytes)
            text += static_cast<wchar_t>(static_cast<unsigned char>(c));
        return text;
    }
    return std::wstring();
}

X11Clipboard::Answer X11Clipboard::Convert(xcb_atom_t selection, xcb_atom_t target, Deadline deadline)
{
    const xcb_atom_t property = connection_.Atom("VOXTREL_SELECTION");
    const xcb_timestamp_t time = ServerTime();
    xcb_delete_property(connection_.Get(), window_, property);
    xcb_convert_selection(connection_.Get(), window_, selection, target, property, time);
    while (const XcbEvent event = AwaitEvent(XCB_SELECTION_NOTIFY, deadline)) {
        const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(*event);
        // A late answer to an earlier question carries that question's time.
        if (notice.selection != selection || notice.target != target || notice.time != time)
            continue;
        if (notice.property == XCB_NONE)
            return {Answer::Kind::Refused, {}};
        xcb_atom_t type = XCB_NONE;
        std::string bytes = TakeProperty(type);
        if (type == connection_.Atom("INCR"))
            return ReadInPieces(deadline, patience_);
        return {Answer::Kind::Text, std::move(bytes)};
    }
    return {Answer::Kind::TimedOut, {}};
}

X11Clipboard::Answer X11Clipboard::ReadInPieces(Deadline deadline, std::chrono::milliseconds patience)
{
    const Deadline end = deadline + patience * kPatienceForPieces;
    Answer answer{Answer::Kind::Text, {}};
    while (AwaitProperty(std::min(end, In(patience)))) {
        xcb_atom_t type = XCB_NONE;
        const std::string piece = TakeProperty(type);
        if (piece.empty())
            return answer;
        answer.bytes += piece;
        if (answer.bytes.size() > kMostBytes)
            break;
    }
    return {Answer::Kind::TimedOut, {}};
}

bool X11Clipboard::AwaitProperty(Deadline deadline)
{
    const xcb_atom_t property = connection_.Atom("VOXTREL_SELECTION");
    while (const XcbEvent event = AwaitEvent(XCB_PROPERTY_NOTIFY, deadline)) {
        const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
        if (changed.window == window_ && changed.atom == property && changed.state == XCB_PROPERTY_NEW_VALUE)
            return true;
        Handle(*event);
    }
    return false;
}

// Taking the property away is what asks the owner for the next piece.
std::string X11Clipboard::TakeProperty(xcb_atom_t& type)
{
    constexpr std::uint32_t kWhole = 0x1fffffff;
    const auto cookie = xcb_get_property(connection_.Get(), 1, window_, connection_.Atom("VOXTREL_SELECTION"),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, kWhole);
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.Get(), cookie, nullptr));
    type = reply ? reply->type : static_cast<xcb_atom_t>(XCB_NONE);
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

bool X11Clipboard::SetText(std::wstring_view text, std::chrono::milliseconds)
{
    return connection_.IsOpen() &&
           TakeOwnership(settings::ToUtf8(text), X11SelectionServer::History::KeepOut);
}

bool X11Clipboard::TakeOwnership(std::string utf8, X11SelectionServer::History history)
{
    const xcb_atom_t clipboard = connection_.Atom("CLIPBOARD");
    const xcb_timestamp_t now = ServerTime();
    xcb_set_selection_owner(connection_.Get(), window_, clipboard, now);
    if (OwnerOf(clipboard) != window_)
        return false;
    server_->Offer(std::move(utf8), now, history);
    ServeRequests();
    return true;
}

void X11Clipboard::ServeUntilOthersCopy(const std::string& utf8)
{
    if (!connection_.IsOpen() || !TakeOwnership(utf8, X11SelectionServer::History::Remember))
        return;
    while (server_->IsOffering() && connection_.IsOpen()) {
        if (const XcbEvent event = connection_.WaitForEvent(In(kLookAfterServer)))
            Handle(*event);
    }
}

std::uint32_t X11Clipboard::GetClipboardSequenceNumber()
{
    if (!connection_.IsOpen())
        return 0;
    connection_.Sync();
    ServeRequests();
    return sequence_;
}

bool X11Clipboard::AwaitChange(std::uint32_t since, Deadline deadline)
{
    if (!connection_.IsOpen())
        return false;
    while (sequence_ == since) {
        const XcbEvent event = connection_.WaitForEvent(deadline);
        if (!event)
            return false;
        Handle(*event);
    }
    ServeRequests();
    return true;
}

void X11Clipboard::HandToManager()
{
    // From here on the text is the user's alone, and may be remembered.
    const xcb_timestamp_t now = ServerTime();
    server_->Offer(server_->Text(), now, X11SelectionServer::History::Remember);
    const std::vector<xcb_atom_t> targets = server_->Targets();
    const xcb_atom_t property = connection_.Atom("VOXTREL_SELECTION");
    xcb_change_property(connection_.Get(), XCB_PROP_MODE_REPLACE, window_, property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(connection_.Get(), window_, connection_.Atom("CLIPBOARD_MANAGER"),
                          connection_.Atom("SAVE_TARGETS"), property, now);
    AwaitEvent(XCB_SELECTION_NOTIFY, In(kHandOverPatience));
}

} // namespace voxtrel::platform
