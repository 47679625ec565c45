#include "platform/desktop.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace voxtrel::platform {
namespace {

constexpr long kFromPager = 2; // source indication of the window manager's messages: acts for the user
constexpr long kStateAdd = 1;

// Talks to the window manager over a connection of its own, in the messages that every manager understands.
class X11Desktop final : public Desktop {
public:
    X11Desktop() : display_(XOpenDisplay(nullptr)) {}
    ~X11Desktop() override
    {
        if (display_)
            XCloseDisplay(display_);
    }

    void ShowWindow(NativeWindow window, int command) override
    {
        if (!display_ || window == 0 || command != kShowRestore)
            return;
        const ErrorsIgnored guard(display_);
        XMapRaised(display_, window);
        Tell(window, "_NET_ACTIVE_WINDOW", {kFromPager, CurrentTime, 0, 0, 0});
    }

    void SetWindowPos(NativeWindow window, NativeWindow insertAfter, int, int, int, int, unsigned) override
    {
        if (!display_ || window == 0 || insertAfter != kTopmost)
            return;
        const ErrorsIgnored guard(display_);
        Tell(window, "_NET_WM_STATE", {kStateAdd, static_cast<long>(Atom("_NET_WM_STATE_ABOVE")), 0, 1, 0});
        XRaiseWindow(display_, window);
    }

    int ScreenWidth() const override { return display_ ? DisplayWidth(display_, DefaultScreen(display_)) : 0; }
    int ScreenHeight() const override { return display_ ? DisplayHeight(display_, DefaultScreen(display_)) : 0; }

private:
    // A window of a program that has ended is no reason to end this one, as the library's own handler would.
    class ErrorsIgnored {
    public:
        explicit ErrorsIgnored(Display* display) : display_(display), before_(XSetErrorHandler(&Ignore)) {}
        ~ErrorsIgnored()
        {
            XSync(display_, False);
            XSetErrorHandler(before_);
        }
        ErrorsIgnored(const ErrorsIgnored&) = delete;
        ErrorsIgnored& operator=(const ErrorsIgnored&) = delete;

    private:
        static int Ignore(Display*, XErrorEvent*) { return 0; }

        Display* display_;
        XErrorHandler before_;
    };

    ::Atom Atom(const char* name) const { return XInternAtom(display_, name, False); }

    void Tell(NativeWindow window, const char* message, const long (&data)[5])
    {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = Atom(message);
        event.xclient.format = 32;
        for (int i = 0; i < 5; ++i)
            event.xclient.data.l[i] = data[i];
        XSendEvent(display_, DefaultRootWindow(display_), False, SubstructureNotifyMask | SubstructureRedirectMask,
                   &event);
    }

    Display* display_;
};

} // namespace

std::unique_ptr<Desktop> MakeDesktop() { return std::make_unique<X11Desktop>(); }

} // namespace voxtrel::platform
