#include "platform/windows/windows_target_windows.h"

#include "platform/windows/windows_headers.h"

#include <algorithm>
#include <chrono>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kTimeToComeToFront = 500ms;
constexpr DWORD kLookIntervalMs = 5;
constexpr UINT kTimeToAnswerMs = 500;
constexpr UINT kTimeToCopyMs = 1000;
constexpr std::size_t kLongestTitle = 512;

HWND Handle(NativeWindow window) { return reinterpret_cast<HWND>(window); }

// False when the window did not answer within the time. One that is gone or must not be asked counts as
// answering.
bool Ask(HWND window, UINT message, UINT timeMs)
{
    DWORD_PTR result = 0;
    SetLastError(ERROR_SUCCESS);
    if (SendMessageTimeoutW(window, message, 0, 0, SMTO_ABORTIFHUNG, timeMs, &result) != 0)
        return true;
    return GetLastError() != ERROR_TIMEOUT;
}

} // namespace

NativeWindow WindowsTargetWindows::GetForegroundWindow()
{
    return reinterpret_cast<NativeWindow>(::GetForegroundWindow());
}

std::uint32_t WindowsTargetWindows::GetWindowThreadProcessId(NativeWindow window)
{
    return ::GetWindowThreadProcessId(Handle(window), nullptr);
}

std::uint32_t WindowsTargetWindows::OwnThread() { return GetCurrentThreadId(); }

std::wstring WindowsTargetWindows::GetWindowTitle(NativeWindow window)
{
    // The usual call may ask the window, which may hang; this one looks the title up.
    std::wstring title(kLongestTitle, L'\0');
    const int length = InternalGetWindowText(Handle(window), title.data(), static_cast<int>(title.size()));
    title.resize(static_cast<std::size_t>(std::max(0, length)));
    return title;
}

void WindowsTargetWindows::SetForegroundWindow(NativeWindow window)
{
    if (!IsWindow(Handle(window)) || ::GetForegroundWindow() == Handle(window))
        return;
    ::SetForegroundWindow(Handle(window));
    // The change goes through the other program's message queue, and nobody tells when it is done.
    const auto deadline = std::chrono::steady_clock::now() + kTimeToComeToFront;
    while (::GetForegroundWindow() != Handle(window) && std::chrono::steady_clock::now() < deadline)
        Sleep(kLookIntervalMs);
}

bool WindowsTargetWindows::IsHungAppWindow(NativeWindow window)
{
    return IsWindow(Handle(window)) &&
           (::IsHungAppWindow(Handle(window)) || !Ask(Handle(window), WM_NULL, kTimeToAnswerMs));
}

void WindowsTargetWindows::SendCopyMessage(NativeWindow window)
{
    if (IsWindow(Handle(window)))
        Ask(Handle(window), WM_COPY, kTimeToCopyMs);
}

} // namespace voxtrel::platform
