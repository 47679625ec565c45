#pragma once

#include "platform/linux/x11_connection.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace voxtrel::platform {

// Hands out a text that this program has on the clipboard to the programs that ask for it, long ones in
// pieces. A program that stops taking its pieces is forgotten after a while; nothing ever waits for it.
class X11SelectionServer {
public:
    X11SelectionServer(X11Connection& connection, xcb_window_t window);

    // Keep the content out of clipboard histories, or let it be remembered.
    enum class History { KeepOut, Remember };

    void Offer(std::string utf8, xcb_timestamp_t since, History history);
    void Withdraw();
    bool IsOffering() const { return offering_; }
    const std::string& Text() const { return text_; }

    void Handle(const xcb_generic_event_t& event);

    // The kinds of content there are, as numbers of the display.
    std::vector<xcb_atom_t> Targets();

private:
    // A long text on its way to a program that takes it piece by piece.
    struct Transfer {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        std::string text;
        std::size_t sent = 0;
        std::chrono::steady_clock::time_point lastTaken;
    };

    void Answer(const xcb_selection_request_event_t& request);
    bool Provide(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    bool ProvideMultiple(xcb_window_t requestor, xcb_atom_t property);
    void ProvideText(xcb_window_t requestor, xcb_atom_t type, xcb_atom_t property, const std::string& text);
    void SendNextPiece(xcb_window_t requestor, xcb_atom_t property);
    void ForgetTransfersOf(xcb_window_t requestor);
    void ForgetStuckTransfers();
    void Change(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::uint8_t format,
                std::size_t count, const void* data);

    X11Connection& connection_;
    xcb_window_t window_;
    bool offering_ = false;
    History history_ = History::KeepOut;
    std::string text_; // UTF-8
    xcb_timestamp_t since_ = 0;
    std::vector<Transfer> transfers_;
};

} // namespace voxtrel::platform
