#pragma once

#include "platform/keyboard.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_key_map.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace voxtrel::platform {

// The keys of the display: which are down, and typing through the XTEST extension.
class X11Keys final : public Keyboard {
public:
    X11Keys();

    bool IsOpen() const { return connection_.IsOpen(); }
    bool CanType() const { return canType_; }

    // Reads within a millisecond are answered from one look at the keyboard.
    short GetAsyncKeyState(int virtualKey) override;

    // Types Ctrl with the key of this symbol into whatever has the focus. Other modifiers that are held down
    // are let go for the moment. False when there is no such key.
    bool TypeWithCtrl(std::uint32_t keysym);

    // Called between the look at the held keys and the typing: the moment in which a user's release counts
    // twice.
    std::function<void()> onLooked;

private:
    struct Stroke {
        xcb_keycode_t code;
        std::uint8_t type; // XCB_KEY_PRESS or XCB_KEY_RELEASE
        bool operator==(const Stroke&) const = default;
    };
    using Strokes = std::vector<Stroke>;

    void LookAgain();
    void HandleMappingChanges();
    bool IsDown(xcb_keycode_t code) const { return (keymap_[code / 8] >> (code % 8)) & 1; }
    void LetGoWhatTheUserReleased();

    Strokes Plan(xcb_keycode_t key, KeyCodes& restored) const;
    void Send(std::span<const Stroke> strokes);
    void ListenToRawKeys(bool on);
    KeyCodes ReleasedMeanwhile(const Strokes& sent, const KeyCodes& restored);

    X11Connection connection_;
    X11KeyMap map_;
    bool canType_ = false;
    std::uint8_t inputOpcode_ = 0; // of the extension that reports raw keys; 0 without it
    std::array<std::uint8_t, 32> keymap_{};
    std::chrono::steady_clock::time_point lookedAt_{};
    // Keys that the user holds and that were pressed again for the user. They are down on the typing device
    // too and must be let go there once the user has.
    KeyCodes pressedForUser_;
};

} // namespace voxtrel::platform
