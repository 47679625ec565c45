#include "platform/linux/x11_pointer.h"

#include <xcb/shape.h>

#include <cstdlib>
#include <cstring>

namespace voxtrel::platform {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class Reply> using ReplyPtr = std::unique_ptr<Reply, Free>;

constexpr int kMaxDepth = 6;                // windows within windows, down to a program's own
constexpr std::uint32_t kMaxProperty = 256; // in units of four bytes

} // namespace

X11Pointer::X11Pointer()
{
    int screen = 0;
    connection_.reset(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection_.get()) != 0)
        return;
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection_.get()));
    for (; screen > 0 && screens.rem > 1; --screen)
        xcb_screen_next(&screens);
    root_ = screens.data->root;
    state_ = Atom("WM_STATE");
    process_ = Atom("_NET_WM_PID");
    title_ = Atom("_NET_WM_NAME");
    oldTitle_ = XCB_ATOM_WM_NAME;
}

X11Pointer::~X11Pointer() = default;

xcb_atom_t X11Pointer::Atom(const char* name)
{
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const ReplyPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_.get(), xcb_intern_atom(connection_.get(), 0, length, name), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::optional<PointerState> X11Pointer::State()
{
    const ReplyPtr<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection_.get(), xcb_query_pointer(connection_.get(), root_), nullptr));
    if (!reply || !reply->same_screen)
        return std::nullopt;
    constexpr auto kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return PointerState{{reply->root_x, reply->root_y}, (reply->mask & kButtons) != 0};
}

xcb_window_t X11Pointer::ChildUnder(xcb_window_t window)
{
    const ReplyPtr<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection_.get(), xcb_query_pointer(connection_.get(), window), nullptr));
    return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
}

X11Pointer::PropertyValue X11Pointer::Property(xcb_window_t window, xcb_atom_t name)
{
    const ReplyPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_.get(),
        xcb_get_property(connection_.get(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, kMaxProperty),
        nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return {};
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return {{bytes, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))}, true};
}

xcb_window_t X11Pointer::ClientOf(xcb_window_t frame)
{
    xcb_window_t window = frame;
    for (int depth = 0; window != XCB_WINDOW_NONE && depth < kMaxDepth; ++depth) {
        if (Property(window, state_).exists)
            return window;
        window = ChildUnder(window);
    }
    // The pointer is over the frame's border.
    return ClientAmongChildren(frame);
}

xcb_window_t X11Pointer::ClientAmongChildren(xcb_window_t frame)
{
    const ReplyPtr<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_.get(), xcb_query_tree(connection_.get(), frame), nullptr));
    if (!tree)
        return XCB_WINDOW_NONE;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        if (Property(children[i], state_).exists)
            return children[i];
    }
    return XCB_WINDOW_NONE;
}

WindowUnderPoint X11Pointer::Describe(xcb_window_t window, bool managed)
{
    WindowUnderPoint found;
    found.managed = managed;
    const PropertyValue process = Property(window, process_);
    if (process.bytes.size() >= sizeof found.process)
        std::memcpy(&found.process, process.bytes.data(), sizeof found.process);
    found.title = Property(window, title_).bytes;
    if (found.title.empty())
        found.title = Property(window, oldTitle_).bytes;
    const ReplyPtr<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection_.get(), xcb_get_geometry(connection_.get(), window), nullptr));
    if (geometry)
        found.width = geometry->width;
    const ReplyPtr<xcb_shape_query_extents_reply_t> shape(xcb_shape_query_extents_reply(
        connection_.get(), xcb_shape_query_extents(connection_.get(), window), nullptr));
    found.shaped = shape && shape->bounding_shaped != 0;
    return found;
}

std::optional<WindowUnderPoint> X11Pointer::WindowUnder()
{
    const xcb_window_t top = ChildUnder(root_);
    if (top == XCB_WINDOW_NONE)
        return std::nullopt;
    if (const xcb_window_t client = ClientOf(top); client != XCB_WINDOW_NONE)
        return Describe(client, true);
    return Describe(top, false);
}

} // namespace voxtrel::platform
