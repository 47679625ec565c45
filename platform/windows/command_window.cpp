#include "platform/windows/command_window.h"

#include "platform/windows/windows_headers.h"

#include <wx/app.h>

#include <cstring>
#include <utility>

namespace voxtrel::platform {
namespace {

const wchar_t* const kClass = L"Voxtrel.Commands";
constexpr ULONG_PTR kCommandText = 0x56585401; // the data is a command in UTF-16
constexpr UINT kSendDeadlineMs = 5000;
constexpr DWORD kRetryMs = 20;

class MessageWindow final : public CommandWindow {
public:
    explicit MessageWindow(std::function<void(std::wstring)> handle) : handle_(std::move(handle)) {}
    ~MessageWindow() override
    {
        if (window_)
            DestroyWindow(window_);
    }
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;

    bool Create()
    {
        const HINSTANCE program = GetModuleHandleW(nullptr);
        WNDCLASSW description = {};
        description.lpfnWndProc = Receive;
        description.hInstance = program;
        description.lpszClassName = kClass;
        if (!RegisterClassW(&description) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
            return false;
        window_ = CreateWindowExW(0, kClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, program, nullptr);
        if (window_)
            SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        return window_ != nullptr;
    }

private:
    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        const auto* self = reinterpret_cast<const MessageWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message != WM_COPYDATA || !self)
            return DefWindowProcW(window, message, wParam, lParam);
        const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        return data && data->dwData == kCommandText && self->Take(*data) ? TRUE : FALSE;
    }

    bool Take(const COPYDATASTRUCT& data) const
    {
        // What a stranger sends may be of any length, and the bytes lie anywhere.
        std::wstring command(data.cbData / sizeof(wchar_t), L'\0');
        if (!command.empty())
            std::memcpy(command.data(), data.lpData, command.size() * sizeof(wchar_t));
        wxTheApp->CallAfter([handle = handle_, command = std::move(command)] { handle(command); });
        return true;
    }

    std::function<void(std::wstring)> handle_;
    HWND window_ = nullptr;
};

// The running program holds its mutex a moment before its window is there.
HWND WaitForWindow()
{
    const ULONGLONG begin = GetTickCount64();
    HWND window = nullptr;
    while (!(window = FindWindowExW(HWND_MESSAGE, nullptr, kClass, nullptr)) &&
           GetTickCount64() - begin < kSendDeadlineMs)
        Sleep(kRetryMs);
    return window;
}

} // namespace

std::unique_ptr<CommandWindow> MakeCommandWindow(std::function<void(std::wstring)> handle)
{
    auto window = std::make_unique<MessageWindow>(std::move(handle));
    if (!window->Create())
        return nullptr;
    return window;
}

bool SendToCommandWindow(std::wstring_view command)
{
    const HWND window = WaitForWindow();
    if (!window)
        return false;
    // The message only reads the text.
    COPYDATASTRUCT data = {kCommandText, static_cast<DWORD>(command.size() * sizeof(wchar_t)),
                           const_cast<wchar_t*>(command.data())};
    DWORD_PTR taken = FALSE;
    return SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG,
                               kSendDeadlineMs, &taken) != 0 &&
           taken != FALSE;
}

} // namespace voxtrel::platform
