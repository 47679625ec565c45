// A program of a few lines to copy from, as odd as it is asked to be.
//
//   target_program [--text TEXT | --size BYTES] [--copy insert|c|both|none] [--primary] [--no-ping]
//                  [--close-on-key] [--hang-on-key] [--class NAME] [--latin1] [--other-answer] [--manager]
//
// Prints "window ID" when its window is on the screen, and a line for every key event: "press" or "release",
// the key's symbol and the modifiers' state.

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

constexpr std::size_t kPiece = 64 * 1024;

struct Options {
    std::string text = "Hello.";
    std::string copy = "both";
    std::string windowClass = "Target";
    bool primary = false;
    bool ping = true;
    bool closeOnKey = false;
    bool hangOnKey = false;
    bool latin1 = false;
    bool manager = false;     // keeps the clipboard of programs that end
    bool otherAnswer = false; // to the question whether it hangs, as some toolkits address it
};

Options Parse(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        const bool hasValue = i + 1 < argc;
        if (name == "--primary")
            options.primary = true;
        else if (name == "--no-ping")
            options.ping = false;
        else if (name == "--close-on-key")
            options.closeOnKey = true;
        else if (name == "--hang-on-key")
            options.hangOnKey = true;
        else if (name == "--manager")
            options.manager = true;
        else if (name == "--other-answer")
            options.otherAnswer = true;
        else if (name == "--latin1")
            options.latin1 = true;
        else if (name == "--text" && hasValue)
            options.text = argv[++i];
        else if (name == "--size" && hasValue)
            options.text.assign(std::stoul(argv[++i]), 'x');
        else if (name == "--copy" && hasValue)
            options.copy = argv[++i];
        else if (name == "--class" && hasValue)
            options.windowClass = argv[++i];
    }
    return options;
}

class Program {
public:
    explicit Program(Options options) : options_(std::move(options)), display_(XOpenDisplay(nullptr))
    {
        if (!display_)
            _exit(3);
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
        window_ = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 40, 40, 200, 100, 0, 0, 0);
        XStoreName(display_, window_, "target");
        XClassHint hint{options_.windowClass.data(), options_.windowClass.data()};
        XSetClassHint(display_, window_, &hint);
        XWMHints hints{};
        hints.flags = InputHint;
        hints.input = True;
        XSetWMHints(display_, window_, &hints);
        if (options_.ping) {
            Atom ping = Named("_NET_WM_PING");
            XSetWMProtocols(display_, window_, &ping, 1);
        }
        const long process = getpid();
        XChangeProperty(display_, window_, Named("_NET_WM_PID"), XA_CARDINAL, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(&process), 1);
        XSelectInput(display_, window_, KeyPressMask | KeyReleaseMask | StructureNotifyMask);
        XMapWindow(display_, window_);
        if (options_.primary)
            XSetSelectionOwner(display_, XA_PRIMARY, window_, CurrentTime);
        if (options_.manager)
            XSetSelectionOwner(display_, Named("CLIPBOARD_MANAGER"), window_, CurrentTime);
    }

    [[noreturn]] void Run()
    {
        for (;;) {
            XEvent event;
            XNextEvent(display_, &event);
            switch (event.type) {
            case MapNotify:
                std::printf("window %lu\n", window_);
                std::fflush(stdout);
                break;
            case KeyPress:
            case KeyRelease:
                OnKey(event.xkey);
                break;
            case SelectionRequest:
                if (event.xselectionrequest.target == Named("SAVE_TARGETS"))
                    AskForClipboard(event.xselectionrequest);
                else
                    Provide(event.xselectionrequest);
                break;
            case SelectionNotify:
                KeepClipboard(event.xselection);
                break;
            case PropertyNotify:
                if (event.xproperty.state == PropertyDelete && event.xproperty.window == requestor_ &&
                    event.xproperty.atom == property_)
                    NextPiece();
                break;
            case ClientMessage:
                Answer(event);
                break;
            default:
                break;
            }
        }
    }

private:
    Atom Named(const char* name) { return XInternAtom(display_, name, False); }

    void OnKey(XKeyEvent& key)
    {
        const KeySym symbol = XLookupKeysym(&key, 0);
        const char* name = XKeysymToString(symbol);
        std::printf("%s %s %u\n", key.type == KeyPress ? "press" : "release", name ? name : "?",
                    key.state & 0xffu);
        std::fflush(stdout);
        const bool copies = ((options_.copy == "both" || options_.copy == "insert") && symbol == XK_Insert) ||
                            ((options_.copy == "both" || options_.copy == "c") && symbol == XK_c);
        constexpr unsigned kOtherModifiers = ShiftMask | Mod1Mask | Mod4Mask | Mod5Mask;
        const bool ctrlAlone = (key.state & ControlMask) && !(key.state & kOtherModifiers);
        if (key.type != KeyPress || !ctrlAlone || (symbol != XK_Insert && symbol != XK_c))
            return;
        if (options_.closeOnKey)
            _exit(0);
        if (options_.hangOnKey)
            raise(SIGSTOP);
        if (copies)
            XSetSelectionOwner(display_, Named("CLIPBOARD"), window_, key.time);
    }

    void Provide(const XSelectionRequestEvent& request)
    {
        const Atom kind = options_.latin1 ? XA_STRING : Named("UTF8_STRING");
        XEvent answer{};
        answer.xselection = {
            SelectionNotify, 0,    False,       display_, request.requestor, request.selection,
            request.target,  None, request.time};
        if (request.target == Named("TARGETS")) {
            XChangeProperty(display_, request.requestor, request.property, XA_ATOM, 32, PropModeReplace,
                            reinterpret_cast<const unsigned char*>(&kind), 1);
            answer.xselection.property = request.property;
        } else if (request.target == kind) {
            ProvideText(request);
            answer.xselection.property = request.property;
        }
        XSendEvent(display_, request.requestor, False, NoEventMask, &answer);
    }

    void AskForClipboard(const XSelectionRequestEvent& request)
    {
        saving_ = request;
        XConvertSelection(display_, Named("CLIPBOARD"), Named("UTF8_STRING"), Named("SAVED"), window_,
                          request.time);
    }

    void KeepClipboard(const XSelectionEvent& notice)
    {
        Atom type = None;
        int format = 0;
        unsigned long size = 0;
        unsigned long left = 0;
        unsigned char* bytes = nullptr;
        XGetWindowProperty(display_, window_, notice.property, 0, 1 << 20, True, AnyPropertyType, &type,
                           &format, &size, &left, &bytes);
        options_.text.assign(reinterpret_cast<const char*>(bytes), size);
        XFree(bytes);
        XSetSelectionOwner(display_, Named("CLIPBOARD"), window_, CurrentTime);
        XEvent answer{};
        answer.xselection = {SelectionNotify,
                             0,
                             False,
                             display_,
                             saving_.requestor,
                             saving_.selection,
                             saving_.target,
                             saving_.property,
                             saving_.time};
        XSendEvent(display_, saving_.requestor, False, NoEventMask, &answer);
    }

    void ProvideText(const XSelectionRequestEvent& request)
    {
        requestor_ = request.requestor;
        property_ = request.property;
        type_ = request.target;
        sent_ = 0;
        if (options_.text.size() <= kPiece) {
            Put(options_.text.data(), options_.text.size());
            return;
        }
        XSelectInput(display_, requestor_, PropertyChangeMask);
        const long size = static_cast<long>(options_.text.size());
        XChangeProperty(display_, requestor_, property_, Named("INCR"), 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(&size), 1);
    }

    void NextPiece()
    {
        const std::size_t size = std::min(kPiece, options_.text.size() - sent_);
        Put(options_.text.data() + sent_, size);
        sent_ += size;
        if (size == 0)
            requestor_ = None;
    }

    void Put(const char* bytes, std::size_t size)
    {
        XChangeProperty(display_, requestor_, property_, type_, 8, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(bytes), static_cast<int>(size));
    }

    void Answer(XEvent& event)
    {
        if (static_cast<Atom>(event.xclient.data.l[0]) != Named("_NET_WM_PING"))
            return;
        event.xclient.window = DefaultRootWindow(display_);
        XSendEvent(display_, event.xclient.window, False, SubstructureRedirectMask | SubstructureNotifyMask,
                   &event);
    }

    Options options_;
    Display* display_;
    Window window_ = None;
    Window requestor_ = None; // of a text that goes in pieces
    Atom property_ = None;
    Atom type_ = None;
    std::size_t sent_ = 0;
    XSelectionRequestEvent saving_{}; // that asked to keep the clipboard
};

} // namespace

int main(int argc, char** argv) { Program(Parse(argc, argv)).Run(); }
