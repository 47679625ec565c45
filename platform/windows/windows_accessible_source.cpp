#include "platform/accessible_source.h"

#include "platform/windows/msaa_query.h"
#include "platform/windows/standard_control.h"
#include "platform/windows/uia_query.h"
#include "platform/windows/windows_headers.h"

#include <fcntl.h>
#include <io.h>
#include <objbase.h>
#include <tlhelp32.h>

#include <cstdio>
#include <utility>

namespace voxtrel::platform {
namespace {

// The process that started this one; 0 when it is not known.
DWORD ParentProcess()
{
    const HANDLE processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (processes == INVALID_HANDLE_VALUE)
        return 0;
    DWORD parent = 0;
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL found = Process32FirstW(processes, &entry); found; found = Process32NextW(processes, &entry)) {
        if (entry.th32ProcessID == GetCurrentProcessId())
            parent = entry.th32ParentProcessID;
    }
    CloseHandle(processes);
    return parent;
}

class WindowsPointer final : public MousePointer {
public:
    std::optional<PointerState> State() override
    {
        POINT point;
        if (!GetCursorPos(&point))
            return std::nullopt;
        const bool pressed = (GetAsyncKeyState(VK_LBUTTON) | GetAsyncKeyState(VK_RBUTTON)) != 0;
        return PointerState{{point.x, point.y}, pressed};
    }
};

class WindowsAccessibleSource final : public AccessibleSource {
public:
    std::optional<AccessibleObject> ObjectAt(ScreenPoint point, std::chrono::milliseconds deadline) override
    {
        const HWND window = WindowFromPoint({point.x, point.y});
        if (!window || window == GetDesktopWindow() || IsOurCharacter(window))
            return AccessibleObject{};
        // Neither of the queries knows a deadline: a window that does not answer a message is not asked.
        ControlQuestions questions(deadline);
        questions.Ask(window, WM_NULL);
        if (questions.Unanswered())
            return std::nullopt;
        if (auto object = uia_.ObjectAt(point))
            return object;
        const HWND framed = WindowFramedBy(window, point);
        MsaaAnswer answer = MsaaObjectAt(point, framed);
        if (answer.deepest && answer.kindKnown)
            return std::move(answer.object);
        auto control = StandardControlAt(questions, framed ? framed : window, point);
        if (questions.Unanswered())
            return std::nullopt;
        if (!control)
            return std::move(answer.object);
        // The name that its program has given it is better than its caption.
        if (answer.deepest && !control->isItem)
            control->object.name = std::move(answer.object.name);
        // What has neither name nor label is named by what it holds.
        if (control->object.name.empty())
            control->object.name = std::exchange(control->object.value, {});
        return control->object.name.empty() ? std::move(answer.object) : std::move(control->object);
    }

private:
    // The character and its balloon come and go under the pointer while they speak: they are not to be
    // interrupted by their own words.
    bool IsOurCharacter(HWND window) const
    {
        const HWND top = GetAncestor(window, GA_ROOT);
        DWORD process = 0;
        GetWindowThreadProcessId(top, &process);
        if (process != parent_)
            return false;
        const HRGN region = CreateRectRgn(0, 0, 0, 0);
        const bool shaped = GetWindowRgn(top, region) != ERROR;
        DeleteObject(region);
        return shaped || (GetWindowLongW(top, GWL_EXSTYLE) & WS_EX_LAYERED) != 0;
    }

    // Released last: the queries' objects are COM's.
    struct Com {
        Com() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
        ~Com() { CoUninitialize(); }
    };

    Com com_;
    UiaQuery uia_;
    DWORD parent_ = ParentProcess();
};

// Pixels of the screen, whatever the scale of the monitor that a window is on. Windows of before 2017 lacks
// this.
void CountInPixels()
{
    using SetContext = BOOL(WINAPI*)(HANDLE);
    const HMODULE user = GetModuleHandleW(L"user32.dll");
    const auto address = user ? GetProcAddress(user, "SetProcessDpiAwarenessContext") : nullptr;
    const auto setContext = reinterpret_cast<SetContext>(reinterpret_cast<void*>(address));
    const auto perMonitor = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-4));
    if (!setContext || !setContext(perMonitor))
        SetProcessDPIAware();
}

} // namespace

void PrepareAccessibilityServer()
{
    CountInPixels();
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

void EndAccessibilityServer() {}

std::unique_ptr<MousePointer> MakeMousePointer() { return std::make_unique<WindowsPointer>(); }

std::unique_ptr<AccessibleSource> MakeAccessibleSource()
{
    return std::make_unique<WindowsAccessibleSource>();
}

} // namespace voxtrel::platform
