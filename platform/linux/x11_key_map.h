#pragma once

#include "platform/linux/x11_connection.h"

#include <cstdint>
#include <map>
#include <vector>

namespace voxtrel::platform {

using KeyCodes = std::vector<xcb_keycode_t>;

// Which keys of the keyboard mean what. Read again after a change of the layout.
class X11KeyMap {
public:
    void Load(X11Connection& connection);

    // The keys with this symbol on any level; empty when the layout has none.
    KeyCodes CodesOf(std::uint32_t keysym) const;

    // The keys of a virtual-key code: letters, digits, F1 to F24, Shift, Ctrl, Alt and some more.
    const KeyCodes& CodesOfVirtualKey(int virtualKey);

    // All keys that act as Ctrl.
    const KeyCodes& Controls() const { return controls_; }

    // All keys that act as a modifier while they are down, other than Ctrl: Shift, Alt, AltGr, the system
    // key. Keys that lock something are not among them.
    const KeyCodes& OtherModifiers() const { return otherModifiers_; }

private:
    KeyCodes FindVirtualKey(int virtualKey) const;
    bool HasSymbol(xcb_keycode_t code, std::uint32_t keysym) const;
    bool Locks(xcb_keycode_t code) const;

    xcb_keycode_t firstCode_ = 8;
    std::size_t symbolsPerCode_ = 0;
    std::vector<std::uint32_t> symbols_;
    KeyCodes controls_;
    KeyCodes otherModifiers_;
    std::map<int, KeyCodes> found_; // of the virtual-key codes asked for so far
};

} // namespace voxtrel::platform
