#include "platform/selection_ports.h"

#include "platform/linux/x11_clipboard.h"
#include "platform/linux/x11_keys.h"
#include "platform/linux/x11_keystrokes.h"
#include "platform/linux/x11_target_windows.h"

#include <glib-unix.h>

#include <cstdlib>
#include <utility>

namespace voxtrel::platform {
namespace {

// Serves the clipboard from the event loop for as long as it lives.
class ServedClipboard final : public Clipboard {
public:
    ServedClipboard()
    {
        if (x11_.IsOpen())
            watch_ = g_unix_fd_add(x11_.FileDescriptor(), G_IO_IN, &Serve, this);
    }
    ~ServedClipboard() override
    {
        if (watch_ != 0)
            g_source_remove(watch_);
    }
    ServedClipboard(const ServedClipboard&) = delete;
    ServedClipboard& operator=(const ServedClipboard&) = delete;

    X11Clipboard& X11() { return x11_; }

    std::optional<std::wstring> GetText(std::chrono::milliseconds patience) override
    {
        return x11_.GetText(patience);
    }
    bool SetText(std::wstring_view text, std::chrono::milliseconds patience) override
    {
        return x11_.SetText(text, patience);
    }
    std::uint32_t GetClipboardSequenceNumber() override { return x11_.GetClipboardSequenceNumber(); }
    bool AwaitChange(std::uint32_t since, Deadline deadline) override
    {
        return x11_.AwaitChange(since, deadline);
    }

private:
    static gboolean Serve(gint, GIOCondition, gpointer self)
    {
        auto& clipboard = *static_cast<ServedClipboard*>(self);
        clipboard.x11_.ServeRequests();
        if (clipboard.x11_.IsOpen())
            return G_SOURCE_CONTINUE;
        clipboard.watch_ = 0;
        return G_SOURCE_REMOVE;
    }

    X11Clipboard x11_;
    guint watch_ = 0;
};

DesktopReach Reach(bool displayIsOpen)
{
    if (!displayIsOpen)
        return DesktopReach::Nothing;
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    return wayland && *wayland ? DesktopReach::X11ProgramsOnly : DesktopReach::Everything;
}

} // namespace

SelectionPorts MakeSelectionPorts()
{
    auto clipboard = std::make_unique<ServedClipboard>();
    auto keys = std::make_unique<X11Keys>();
    auto windows = std::make_unique<X11TargetWindows>(clipboard->X11());
    SelectionPorts ports;
    ports.reach = Reach(keys->IsOpen());
    ports.keystrokes = std::make_unique<X11Keystrokes>(*keys, *windows);
    ports.keyboard = std::move(keys);
    ports.windows = std::move(windows);
    ports.clipboard = std::move(clipboard);
    return ports;
}

} // namespace voxtrel::platform
