// picture_watch NAME: prints "<ms> <hash>" each time that the picture in the window of this name has changed,
// until it is ended. The milliseconds are those of the monotonic clock, of the moment when the new picture
// was seen.

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kBetweenLooks{2};

bool IsNamed(Display* display, Window window, std::string_view name)
{
    char* found = nullptr;
    if (!XFetchName(display, window, &found) || found == nullptr)
        return false;
    const bool same = name == found;
    XFree(found);
    XWindowAttributes attributes{};
    return same && XGetWindowAttributes(display, window, &attributes) && attributes.map_state == IsViewable;
}

Window FindNamed(Display* display, Window below, std::string_view name)
{
    if (IsNamed(display, below, name))
        return below;
    Window root = 0, parent = 0, found = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, below, &root, &parent, &children, &count))
        return 0;
    for (unsigned i = 0; i < count && found == 0; ++i)
        found = FindNamed(display, children[i], name);
    if (children != nullptr)
        XFree(children);
    return found;
}

std::uint64_t HashOf(const XImage& image)
{
    std::uint64_t hash = 14695981039346656037U;
    const std::size_t size =
        static_cast<std::size_t>(image.bytes_per_line) * static_cast<std::size_t>(image.height);
    for (std::size_t i = 0; i + 8 <= size; i += 8) {
        std::uint64_t pixels = 0;
        std::memcpy(&pixels, image.data + i, 8);
        hash = (hash ^ pixels) * 1099511628211U;
    }
    return hash;
}

int IgnoreError(Display*, XErrorEvent*) { return 0; }

} // namespace

int main(int argc, char** argv)
{
    Display* display = XOpenDisplay(nullptr);
    if (argc != 2 || display == nullptr)
        return 2;
    XSetErrorHandler(&IgnoreError);
    const Window window = FindNamed(display, DefaultRootWindow(display), argv[1]);
    if (window == 0)
        return 1;
    std::uint64_t last = 0;
    while (true) {
        XWindowAttributes attributes{};
        if (!XGetWindowAttributes(display, window, &attributes) || attributes.map_state != IsViewable)
            return 0;
        XImage* image = XGetImage(display, window, 0, 0, static_cast<unsigned>(attributes.width),
                                  static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
        if (image != nullptr) {
            const std::uint64_t hash = HashOf(*image);
            const std::chrono::duration<double, std::milli> now = Clock::now().time_since_epoch();
            if (hash != last)
                std::printf("%.1f %016llx\n", now.count(), static_cast<unsigned long long>(hash));
            std::fflush(stdout);
            last = hash;
            XDestroyImage(image);
        }
        std::this_thread::sleep_for(kBetweenLooks);
    }
}
