#pragma once

#include "platform/clipboard.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_selection_server.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace voxtrel::platform {

// The CLIPBOARD selection. What was set here is ours to hand out for as long as nobody else copies: the event
// loop must call ServeRequests whenever FileDescriptor can be read.
class X11Clipboard final : public Clipboard {
public:
    X11Clipboard();
    // A text that is ours to hand out stays on the clipboard: the desktop's clipboard manager takes it, or a
    // process that is left behind.
    ~X11Clipboard() override;

    bool IsOpen() const { return connection_.IsOpen(); }
    int FileDescriptor() const { return xcb_get_file_descriptor(connection_.Get()); }
    void ServeRequests();

    std::optional<std::wstring> GetText(std::chrono::milliseconds patience) override;
    bool SetText(std::wstring_view text, std::chrono::milliseconds patience) override;
    std::uint32_t GetClipboardSequenceNumber() override;
    bool AwaitChange(std::uint32_t since, Deadline deadline) override;

    // The PRIMARY selection, that is what is selected right now, when a window of this client has it.
    std::optional<std::wstring> PrimaryTextOf(std::uint32_t client, std::chrono::milliseconds patience);

    // Offers the text, without any mark, and returns when another program has copied or the display is gone.
    void ServeUntilOthersCopy(const std::string& utf8);

    // The time that requests to the server and to other programs carry; moves with each call.
    xcb_timestamp_t ServerTime();

private:
    struct Answer {
        enum class Kind { Text, Refused, TimedOut };
        Kind kind;
        std::string bytes;
    };

    std::optional<std::wstring> Read(xcb_atom_t selection, std::chrono::milliseconds patience);
    Answer Convert(xcb_atom_t selection, xcb_atom_t target, Deadline deadline);
    Answer ReadInPieces(Deadline deadline, std::chrono::milliseconds patience);
    std::string TakeProperty(xcb_atom_t& type);
    bool AwaitProperty(Deadline deadline);
    XcbEvent AwaitEvent(std::uint8_t type, Deadline deadline);
    xcb_window_t OwnerOf(xcb_atom_t selection);
    bool TakeOwnership(std::string utf8, X11SelectionServer::History history);
    void HandToManager();
    void Handle(const xcb_generic_event_t& event);

    X11Connection connection_;
    xcb_window_t window_ = 0; // never shown; owns the selection and receives what is asked for
    std::uint8_t fixesEvent_ = 0;
    std::uint32_t sequence_ = 0;
    std::chrono::milliseconds patience_{};
    std::optional<X11SelectionServer> server_;
};

} // namespace voxtrel::platform
