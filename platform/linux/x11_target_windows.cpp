#include "platform/linux/x11_target_windows.h"

#include "platform/linux/toolkit_clipboard.h"
#include "settings/text_case.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unistd.h>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kTimeToComeToFront = 500ms;
constexpr auto kTimeForOwnWindow = 300ms;
constexpr auto kTimeToAnswer = 500ms;
constexpr auto kTimeToHandOut = 1000ms;
constexpr std::uint32_t kFromPager = 2; // source of a request to the window manager: acts for the user

// By the class of their windows, in lower case.
constexpr std::array<std::string_view, 36> kTerminals = {
    "alacritty",
    "aterm",
    "com.mitchellh.ghostty",
    "cool-retro-term",
    "deepin-terminal",
    "eterm",
    "foot",
    "gnome-terminal",
    "gnome-terminal-server",
    "guake",
    "kgx",
    "kitty",
    "konsole",
    "lxterminal",
    "mate-terminal",
    "mlterm",
    "org.gnome.console",
    "org.gnome.ptyxis",
    "org.wezfurlong.wezterm",
    "pantheon-terminal",
    "ptyxis",
    "qterminal",
    "roxterm",
    "rxvt",
    "sakura",
    "st",
    "st-256color",
    "terminator",
    "terminology",
    "tilda",
    "tilix",
    "urxvt",
    "uxterm",
    "xfce4-terminal",
    "xterm",
    "yakuake",
};

xcb_window_t Xid(NativeWindow window) { return static_cast<xcb_window_t>(window); }

std::chrono::steady_clock::time_point In(std::chrono::milliseconds time)
{
    return std::chrono::steady_clock::now() + time;
}

} // namespace

X11TargetWindows::X11TargetWindows(X11Clipboard& clipboard) : clipboard_(clipboard)
{
    if (connection_.IsOpen())
        connection_.SelectEvents(connection_.Root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
}

NativeWindow X11TargetWindows::GetForegroundWindow()
{
    if (!connection_.IsOpen())
        return 0;
    HandleEvents();
    if (!activeKnown_) {
        active_ = ActiveWindow();
        activeKnown_ = managed_;
    }
    return active_;
}

xcb_window_t X11TargetWindows::ActiveWindow()
{
    const auto active =
        connection_.Numbers(connection_.Root(), connection_.Atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    if (!active.empty()) {
        managed_ = true;
        return active.front();
    }
    // A manager that has just started has had no active window to tell of.
    const xcb_atom_t manager = connection_.Atom("_NET_SUPPORTING_WM_CHECK");
    managed_ = !connection_.Numbers(connection_.Root(), manager, XCB_ATOM_WINDOW).empty();
    return managed_ ? 0 : FocusedTopWindow();
}

xcb_window_t X11TargetWindows::InputFocus()
{
    const auto cookie = xcb_get_input_focus(connection_.Get());
    const XcbPtr<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_.Get(), cookie, nullptr));
    const bool isWindow = reply && reply->focus != XCB_NONE && reply->focus != XCB_INPUT_FOCUS_POINTER_ROOT;
    return isWindow ? reply->focus : 0;
}

xcb_window_t X11TargetWindows::Parent(xcb_window_t window)
{
    const auto cookie = xcb_query_tree(connection_.Get(), window);
    const XcbPtr<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(connection_.Get(), cookie, nullptr));
    return reply ? reply->parent : 0;
}

xcb_window_t X11TargetWindows::FocusedTopWindow()
{
    xcb_window_t window = InputFocus();
    if (window == connection_.Root())
        return 0;
    while (window != 0) {
        const xcb_window_t parent = Parent(window);
        if (parent == connection_.Root())
            break;
        window = parent;
    }
    return window;
}

std::uint32_t X11TargetWindows::GetWindowThreadProcessId(NativeWindow window)
{
    if (!connection_.IsOpen())
        return 0;
    const auto process = connection_.Numbers(Xid(window), connection_.Atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
    if (process.empty())
        return 0;
    // A program on another machine may have our number.
    std::array<char, 256> ownMachine{};
    const std::string machine = connection_.Bytes(Xid(window), XCB_ATOM_WM_CLIENT_MACHINE);
    const bool elsewhere = !machine.empty() && gethostname(ownMachine.data(), ownMachine.size() - 1) == 0 &&
                           std::string_view(machine.c_str()) != ownMachine.data();
    return elsewhere ? 0 : process.front();
}

std::uint32_t X11TargetWindows::OwnThread() { return static_cast<std::uint32_t>(getpid()); }

std::wstring X11TargetWindows::GetWindowTitle(NativeWindow window)
{
    if (!connection_.IsOpen())
        return {};
    std::string title = connection_.Bytes(Xid(window), connection_.Atom("_NET_WM_NAME"));
    if (title.empty())
        title = connection_.Bytes(Xid(window), XCB_ATOM_WM_NAME);
    return settings::FromUtf8(title);
}

void X11TargetWindows::SetForegroundWindow(NativeWindow window)
{
    if (!connection_.IsOpen() || window == 0 || !Exists(Xid(window)) || HasFocus(window))
        return;
    if (managed_) {
        Tell(Xid(window), connection_.Root(),
             XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
             connection_.Atom("_NET_ACTIVE_WINDOW"), {kFromPager, clipboard_.ServerTime(), 0, 0, 0});
    } else {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(connection_.Get(), Xid(window), XCB_CONFIG_WINDOW_STACK_MODE, &above);
        xcb_set_input_focus(connection_.Get(), XCB_INPUT_FOCUS_PARENT, Xid(window), XCB_CURRENT_TIME);
    }
    // The manager tells of the change, but the focus may follow a little later, and nobody tells of that.
    constexpr auto kLookInterval = 5ms;
    const Deadline deadline = In(kTimeToComeToFront);
    while (!HasFocus(window) && std::chrono::steady_clock::now() < deadline && connection_.IsOpen()) {
        if (const XcbEvent event = connection_.WaitForEvent(std::min(deadline, In(kLookInterval))))
            Handle(*event);
    }
}

void X11TargetWindows::AwaitOwnWindow()
{
    if (!connection_.IsOpen())
        return;
    FlushToolkit();
    const Deadline deadline = In(kTimeForOwnWindow);
    while (GetWindowThreadProcessId(GetForegroundWindow()) != OwnThread()) {
        const XcbEvent event = connection_.WaitForEvent(deadline);
        if (!event)
            return;
        Handle(*event);
    }
}

bool X11TargetWindows::HasFocus(NativeWindow window)
{
    connection_.Sync();
    if (GetForegroundWindow() != window)
        return false;
    xcb_window_t focus = InputFocus();
    while (focus != 0 && focus != Xid(window) && focus != connection_.Root())
        focus = Parent(focus);
    return focus == Xid(window);
}

bool X11TargetWindows::Exists(xcb_window_t window)
{
    const auto cookie = xcb_get_geometry(connection_.Get(), window);
    const XcbPtr<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(connection_.Get(), cookie, nullptr));
    return reply != nullptr;
}

bool X11TargetWindows::IsHungAppWindow(NativeWindow window) { return !AwaitAnswer(window, kTimeToAnswer); }

// Asks as window managers do. The program works through its events in their order, keystrokes before the
// question.
bool X11TargetWindows::AwaitAnswer(NativeWindow window, std::chrono::milliseconds time)
{
    if (!connection_.IsOpen() || !Answers(Xid(window)))
        return true;
    const xcb_window_t root = connection_.Root();
    const xcb_atom_t ping = connection_.Atom("_NET_WM_PING");
    // Programs differ in how they address their answer to the root window.
    connection_.SelectEvents(root, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY |
                                       XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    asked_ = Xid(window);
    question_ = clipboard_.ServerTime();
    Tell(asked_, asked_, XCB_EVENT_MASK_NO_EVENT, connection_.Atom("WM_PROTOCOLS"),
         {ping, question_, asked_, 0, 0});
    const Deadline deadline = In(time);
    bool answered = false;
    while (!answered) {
        const XcbEvent event = connection_.WaitForEvent(deadline);
        if (!event)
            break;
        answered = Handle(*event);
    }
    asked_ = 0;
    connection_.SelectEvents(root, XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_flush(connection_.Get());
    return answered;
}

bool X11TargetWindows::Answers(xcb_window_t window)
{
    const auto protocols = connection_.Numbers(window, connection_.Atom("WM_PROTOCOLS"), XCB_ATOM_ATOM);
    return std::ranges::find(protocols, connection_.Atom("_NET_WM_PING")) != protocols.end();
}

void X11TargetWindows::SendCopyMessage(NativeWindow window)
{
    if (!connection_.IsOpen() || window == 0)
        return;
    const std::optional<std::wstring> selected =
        clipboard_.PrimaryTextOf(connection_.ClientOf(Xid(window)), kTimeToHandOut);
    if (selected && !selected->empty())
        clipboard_.SetText(*selected, kTimeToHandOut);
}

bool X11TargetWindows::TakesKeysAsInput(NativeWindow window)
{
    // Two texts, each with a zero behind it: the instance's name and the class.
    const std::string names = connection_.Bytes(Xid(window), XCB_ATOM_WM_CLASS);
    const std::size_t end = names.find('\0');
    if (end == std::string::npos)
        return false;
    std::string windowClass(names.c_str() + end + 1);
    std::ranges::transform(windowClass, windowClass.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return std::ranges::find(kTerminals, windowClass) != kTerminals.end();
}

void X11TargetWindows::HandleEvents()
{
    while (const XcbEvent event = connection_.PollForEvent())
        Handle(*event);
}

bool X11TargetWindows::Handle(const xcb_generic_event_t& event)
{
    if (TypeOf(event) == XCB_PROPERTY_NOTIFY) {
        const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (changed.atom == connection_.Atom("_NET_ACTIVE_WINDOW"))
            activeKnown_ = false;
    }
    if (TypeOf(event) != XCB_CLIENT_MESSAGE || asked_ == 0)
        return false;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    return message.type == connection_.Atom("WM_PROTOCOLS") && message.format == 32 &&
           message.data.data32[0] == connection_.Atom("_NET_WM_PING") &&
           message.data.data32[1] == question_ && message.data.data32[2] == asked_;
}

void X11TargetWindows::Tell(xcb_window_t window, xcb_window_t destination, std::uint32_t eventMask,
                            xcb_atom_t message, const std::uint32_t (&data)[5])
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = message;
    std::copy(std::begin(data), std::end(data), event.data.data32);
    xcb_send_event(connection_.Get(), 0, destination, eventMask, reinterpret_cast<const char*>(&event));
}

} // namespace voxtrel::platform
