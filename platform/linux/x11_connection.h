#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::platform {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename T> using XcbPtr = std::unique_ptr<T, FreeDeleter>;
using XcbEvent = XcbPtr<xcb_generic_event_t>;
using Deadline = std::chrono::steady_clock::time_point;

inline std::uint8_t TypeOf(const xcb_generic_event_t& event) { return event.response_type & 0x7f; }

// A connection to the display of its own: what is asked of windows that may be gone by then ends in an error
// reply or event here, and never in the error handler that the window toolkit has for the whole process.
class X11Connection {
public:
    X11Connection();
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    bool IsOpen() const { return screen_ != nullptr && xcb_connection_has_error(connection_) == 0; }
    xcb_connection_t* Get() const { return connection_; }
    xcb_window_t Root() const { return screen_->root; }

    xcb_atom_t Atom(std::string_view name);

    // Null when there is none, or none came before the deadline.
    XcbEvent PollForEvent();
    XcbEvent WaitForEvent(Deadline deadline);

    // Returns once the server has done all that was asked so far.
    void Sync();

    // A 32-bit property of a window, empty when there is none.
    std::vector<std::uint32_t> Numbers(xcb_window_t window, xcb_atom_t property, xcb_atom_t type);
    std::string Bytes(xcb_window_t window, xcb_atom_t property);

    void SelectEvents(xcb_window_t window, std::uint32_t mask);

    // The same number for all windows that one client made.
    std::uint32_t ClientOf(xcb_window_t window) const
    {
        return window & ~xcb_get_setup(connection_)->resource_id_mask;
    }

private:
    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
};

} // namespace voxtrel::platform
