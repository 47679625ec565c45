#include "platform/windows/windows_clipboard.h"

#include "platform/windows/windows_headers.h"

#include <algorithm>
#include <cstring>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kLookInterval = 10ms;

// Each is a sign to one kind of clipboard history; the value 0 answers its question with no.
constexpr const wchar_t* kKeepOutFormats[] = {L"ExcludeClipboardContentFromMonitorProcessing",
                                              L"CanIncludeInClipboardHistory", L"CanUploadToCloudClipboard"};

class ClosedAtEnd {
public:
    ClosedAtEnd() = default;
    ~ClosedAtEnd() { CloseClipboard(); }
    ClosedAtEnd(const ClosedAtEnd&) = delete;
    ClosedAtEnd& operator=(const ClosedAtEnd&) = delete;
};

// Memory as the clipboard wants it; null without memory.
HGLOBAL GlobalCopy(const void* bytes, std::size_t size)
{
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (void* target = memory ? GlobalLock(memory) : nullptr) {
        std::memcpy(target, bytes, size);
        GlobalUnlock(memory);
    }
    return memory;
}

std::wstring TextIn(HANDLE memory)
{
    const auto* first = static_cast<const wchar_t*>(GlobalLock(memory));
    if (!first)
        return {};
    // The closing zero may be missing in what another program has written.
    const wchar_t* last = first + GlobalSize(memory) / sizeof(wchar_t);
    std::wstring text(first, std::find(first, last, L'\0'));
    GlobalUnlock(memory);
    return text;
}

int MillisecondsUntil(std::chrono::steady_clock::time_point deadline)
{
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(0, left.count()));
}

// A text may be made only when it is asked for, by its owner; asking one that hangs would hang as well.
bool OwnerAnswers(std::chrono::milliseconds patience)
{
    const HWND owner = GetClipboardOwner();
    if (!owner || GetWindowThreadProcessId(owner, nullptr) == GetCurrentThreadId())
        return true;
    DWORD_PTR result = 0;
    const UINT time = static_cast<UINT>(std::max<std::chrono::milliseconds::rep>(1, patience.count()));
    SetLastError(ERROR_SUCCESS);
    return SendMessageTimeoutW(owner, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, time, &result) != 0 ||
           GetLastError() != ERROR_TIMEOUT;
}

} // namespace

WindowsClipboard::WindowsClipboard()
    : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr))
{
    AddClipboardFormatListener(window_);
    std::ranges::transform(kKeepOutFormats, keepOutFormats_.begin(), RegisterClipboardFormatW);
}

WindowsClipboard::~WindowsClipboard()
{
    RemoveClipboardFormatListener(window_);
    DestroyWindow(window_);
}

void WindowsClipboard::WaitForNews(Deadline deadline)
{
    const int longest = static_cast<int>(kLookInterval.count());
    MsgWaitForMultipleObjectsEx(0, nullptr,
                                static_cast<DWORD>(std::min(MillisecondsUntil(deadline), longest)),
                                QS_SENDMESSAGE | QS_POSTMESSAGE, 0);
    MSG message;
    while (PeekMessageW(&message, window_, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

bool WindowsClipboard::Open(Deadline deadline)
{
    while (!OpenClipboard(window_)) {
        if (MillisecondsUntil(deadline) == 0)
            return false;
        WaitForNews(deadline);
    }
    return true;
}

std::optional<std::wstring> WindowsClipboard::GetText(std::chrono::milliseconds patience)
{
    const Deadline deadline = std::chrono::steady_clock::now() + patience;
    if (!OwnerAnswers(patience) || !Open(deadline))
        return std::nullopt;
    const ClosedAtEnd closed;
    const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
    return memory ? TextIn(memory) : std::wstring();
}

bool WindowsClipboard::SetText(std::wstring_view text, std::chrono::milliseconds patience)
{
    const std::wstring closedByZero(text);
    const HGLOBAL memory = GlobalCopy(closedByZero.c_str(), (closedByZero.size() + 1) * sizeof(wchar_t));
    if (!memory)
        return false;
    if (!Open(std::chrono::steady_clock::now() + patience)) {
        GlobalFree(memory);
        return false;
    }
    const ClosedAtEnd closed;
    EmptyClipboard();
    if (!SetClipboardData(CF_UNICODETEXT, memory))
        GlobalFree(memory);
    const DWORD no = 0;
    for (const UINT format : keepOutFormats_) {
        const HGLOBAL answer = GlobalCopy(&no, sizeof no);
        if (!SetClipboardData(format, answer))
            GlobalFree(answer);
    }
    return true;
}

std::uint32_t WindowsClipboard::GetClipboardSequenceNumber() { return ::GetClipboardSequenceNumber(); }

bool WindowsClipboard::AwaitChange(std::uint32_t since, Deadline deadline)
{
    while (::GetClipboardSequenceNumber() == since) {
        if (MillisecondsUntil(deadline) == 0)
            return false;
        WaitForNews(deadline);
    }
    return true;
}

} // namespace voxtrel::platform
