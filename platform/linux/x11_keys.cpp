// Typing while the user holds keys down.
//
// The hot key's own Ctrl is still down when the copy keystroke is typed, and perhaps Shift or Alt beside it.
// The user's Ctrl is left alone: the keystroke comes with a Ctrl key of its own, one that is up. The other
// modifiers are let go before and pressed again behind the keystroke, all in one packet, so that nothing
// comes between. The display has one state for each key, whoever presses it; so when the user lets go of such
// a key in the very moment between the look at the keyboard and the packet, it would stay down. The raw
// events, which tell the user's strokes in one order with ours, show that, and the key is let go once more.

#include "platform/linux/x11_keys.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <algorithm>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kLookLasts = 1ms;

bool Contains(const KeyCodes& codes, xcb_keycode_t code)
{
    return std::ranges::find(codes, code) != codes.end();
}

std::uint8_t RawKeyOpcode(X11Connection& connection)
{
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection.Get(), &xcb_input_id);
    if (!extension || !extension->present)
        return 0;
    // From this version on, raw events come also while another program has the keyboard grabbed.
    const auto cookie = xcb_input_xi_query_version(connection.Get(), 2, 2);
    const XcbPtr<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection.Get(), cookie, nullptr));
    return version && version->major_version >= 2 ? extension->major_opcode : 0;
}

} // namespace

X11Keys::X11Keys()
{
    if (!connection_.IsOpen())
        return;
    map_.Load(connection_);
    const xcb_query_extension_reply_t* typing = xcb_get_extension_data(connection_.Get(), &xcb_test_id);
    canType_ = typing && typing->present;
    inputOpcode_ = RawKeyOpcode(connection_);
}

short X11Keys::GetAsyncKeyState(int virtualKey)
{
    if (!connection_.IsOpen())
        return 0;
    if (std::chrono::steady_clock::now() - lookedAt_ > kLookLasts)
        LookAgain();
    const KeyCodes& codes = map_.CodesOfVirtualKey(virtualKey);
    const bool down = std::ranges::any_of(codes, [this](xcb_keycode_t code) { return IsDown(code); });
    return down ? static_cast<short>(-0x8000) : 0;
}

void X11Keys::LookAgain()
{
    HandleMappingChanges();
    const auto cookie = xcb_query_keymap(connection_.Get());
    const XcbPtr<xcb_query_keymap_reply_t> reply(xcb_query_keymap_reply(connection_.Get(), cookie, nullptr));
    if (reply)
        std::copy(std::begin(reply->keys), std::end(reply->keys), keymap_.begin());
    else
        keymap_.fill(0);
    lookedAt_ = std::chrono::steady_clock::now();
    LetGoWhatTheUserReleased();
}

void X11Keys::HandleMappingChanges()
{
    bool changed = false;
    while (const XcbEvent event = connection_.PollForEvent())
        changed |= TypeOf(*event) == XCB_MAPPING_NOTIFY;
    if (changed)
        map_.Load(connection_);
}

void X11Keys::LetGoWhatTheUserReleased()
{
    if (pressedForUser_.empty())
        return;
    Strokes released;
    for (const xcb_keycode_t code : pressedForUser_) {
        if (!IsDown(code))
            released.push_back({code, XCB_KEY_RELEASE});
    }
    Send(released);
    std::erase_if(pressedForUser_, [this](xcb_keycode_t code) { return !IsDown(code); });
}

bool X11Keys::TypeWithCtrl(std::uint32_t keysym)
{
    if (!canType_ || !connection_.IsOpen())
        return false;
    HandleMappingChanges();
    const KeyCodes keys = map_.CodesOf(keysym);
    if (keys.empty() || map_.Controls().empty())
        return false;
    ListenToRawKeys(true);
    LookAgain();
    if (onLooked)
        onLooked();
    KeyCodes restored;
    const Strokes strokes = Plan(keys.front(), restored);
    Send(strokes);
    connection_.Sync();
    Strokes stuck;
    for (const xcb_keycode_t code : ReleasedMeanwhile(strokes, restored)) {
        stuck.push_back({code, XCB_KEY_RELEASE});
        std::erase(restored, code);
    }
    Send(stuck);
    ListenToRawKeys(false);
    connection_.Sync();
    pressedForUser_.insert(pressedForUser_.end(), restored.begin(), restored.end());
    lookedAt_ = {};
    return true;
}

X11Keys::Strokes X11Keys::Plan(xcb_keycode_t key, KeyCodes& restored) const
{
    const KeyCodes& controls = map_.Controls();
    const auto up = std::ranges::find_if(controls, [this](xcb_keycode_t code) { return !IsDown(code); });
    const bool userHoldsEveryCtrl = up == controls.end();
    const xcb_keycode_t ctrl = userHoldsEveryCtrl ? controls.front() : *up;

    Strokes strokes;
    if (userHoldsEveryCtrl) {
        strokes.push_back({ctrl, XCB_KEY_RELEASE});
        restored.push_back(ctrl);
    }
    strokes.push_back({ctrl, XCB_KEY_PRESS});
    Strokes again;
    for (const xcb_keycode_t code : map_.OtherModifiers()) {
        if (!IsDown(code) || Contains(restored, code))
            continue;
        strokes.push_back({code, XCB_KEY_RELEASE});
        again.push_back({code, XCB_KEY_PRESS});
        restored.push_back(code);
    }
    strokes.push_back({key, XCB_KEY_PRESS});
    strokes.push_back({key, XCB_KEY_RELEASE});
    // Ctrl goes last: a lone Alt or system key would open a menu.
    strokes.insert(strokes.end(), again.begin(), again.end());
    if (!userHoldsEveryCtrl)
        strokes.push_back({ctrl, XCB_KEY_RELEASE});
    return strokes;
}

void X11Keys::Send(std::span<const Stroke> strokes)
{
    for (const Stroke& stroke : strokes)
        xcb_test_fake_input(connection_.Get(), stroke.type, stroke.code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(connection_.Get());
}

void X11Keys::ListenToRawKeys(bool on)
{
    if (inputOpcode_ == 0)
        return;
    const struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } request = {{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                 on ? XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE : 0u};
    xcb_input_xi_select_events(connection_.Get(), connection_.Root(), 1, &request.head);
}

// Keys that the user let go of before they were pressed again for the user.
KeyCodes X11Keys::ReleasedMeanwhile(const Strokes& sent, const KeyCodes& restored)
{
    KeyCodes released;
    std::size_t seen = 0; // of our own strokes
    while (const XcbEvent event = connection_.PollForEvent()) {
        if (TypeOf(*event) == XCB_MAPPING_NOTIFY)
            map_.Load(connection_);
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(*event);
        if (TypeOf(*event) != XCB_GE_GENERIC || generic.extension != inputOpcode_)
            continue;
        const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(*event);
        const Stroke stroke{static_cast<xcb_keycode_t>(raw.detail), raw.event_type == XCB_INPUT_RAW_KEY_PRESS
                                                                        ? std::uint8_t{XCB_KEY_PRESS}
                                                                        : std::uint8_t{XCB_KEY_RELEASE}};
        if (seen < sent.size() && stroke == sent[seen]) {
            ++seen;
            continue;
        }
        const Stroke pressedAgain{stroke.code, XCB_KEY_PRESS};
        const bool toCome = std::find(sent.begin() + static_cast<std::ptrdiff_t>(seen), sent.end(),
                                      pressedAgain) != sent.end();
        if (stroke.type == XCB_KEY_RELEASE && toCome && Contains(restored, stroke.code))
            released.push_back(stroke.code);
    }
    return released;
}

} // namespace voxtrel::platform
