#pragma once

#include "platform/accessible_source.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace voxtrel::platform {

// The top window under a point.
struct WindowUnderPoint {
    std::uint32_t process = 0; // 0 when the window does not tell
    std::string title;
    int width = 0;        // pixels
    bool managed = false; // by the window manager; menus and tool tips are not
    bool shaped = false;  // has another outline than a rectangle
};

// What the X server knows of the pointer. One connection, used by one thread; without a display it knows
// nothing.
class X11Pointer final : public MousePointer {
public:
    X11Pointer();
    ~X11Pointer() override;

    std::optional<PointerState> State() override;

    // The window under the pointer at this moment; nothing over the desktop's background.
    std::optional<WindowUnderPoint> WindowUnder();

private:
    struct PropertyValue {
        std::string bytes;
        bool exists = false;
    };

    xcb_atom_t Atom(const char* name);
    PropertyValue Property(xcb_window_t window, xcb_atom_t name);
    xcb_window_t ChildUnder(xcb_window_t window);
    // The window of the program within a window of the window manager; 0 when there is none.
    xcb_window_t ClientOf(xcb_window_t frame);
    xcb_window_t ClientAmongChildren(xcb_window_t frame);
    WindowUnderPoint Describe(xcb_window_t window, bool managed);

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_window_t root_ = 0;
    xcb_atom_t state_ = 0;
    xcb_atom_t process_ = 0;
    xcb_atom_t title_ = 0;
    xcb_atom_t oldTitle_ = 0;
};

} // namespace voxtrel::platform
