#include "platform/linux/x11_connection.h"

#include <cerrno>
#include <poll.h>

namespace voxtrel::platform {
namespace {

constexpr std::uint32_t kWholeProperty = 0x1fffffff; // in 4-byte units

} // namespace

X11Connection::X11Connection()
{
    int preferred = 0;
    connection_ = xcb_connect(nullptr, &preferred);
    if (xcb_connection_has_error(connection_) != 0)
        return;
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; screens.rem > 1 && preferred > 0; --preferred)
        xcb_screen_next(&screens);
    screen_ = screens.rem > 0 ? screens.data : nullptr;
}

X11Connection::~X11Connection() { xcb_disconnect(connection_); }

xcb_atom_t X11Connection::Atom(std::string_view name)
{
    const auto known = atoms_.find(name);
    if (known != atoms_.end())
        return known->second;
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    atoms_.emplace(name, atom);
    return atom;
}

XcbEvent X11Connection::PollForEvent() { return XcbEvent(xcb_poll_for_event(connection_)); }

XcbEvent X11Connection::WaitForEvent(Deadline deadline)
{
    xcb_flush(connection_);
    for (;;) {
        if (XcbEvent event = PollForEvent())
            return event;
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0 || !IsOpen())
            return nullptr;
        pollfd connection{xcb_get_file_descriptor(connection_), POLLIN, 0};
        if (poll(&connection, 1, static_cast<int>(left.count())) < 0 && errno != EINTR)
            return nullptr;
    }
}

void X11Connection::Sync()
{
    const XcbPtr<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

std::vector<std::uint32_t> X11Connection::Numbers(xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    const auto cookie = xcb_get_property(connection_, 0, window, property, type, 0, kWholeProperty);
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::string X11Connection::Bytes(xcb_window_t window, xcb_atom_t property)
{
    const auto cookie =
        xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kWholeProperty);
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

void X11Connection::SelectEvents(xcb_window_t window, std::uint32_t mask)
{
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace voxtrel::platform
