#include "platform/windows/windows_accessible_source.h"

#include "platform/windows/control_questions.h"
#include "platform/windows/msaa_query.h"
#include "platform/windows/standard_control.h"

#include <tlhelp32.h>

#include <utility>

namespace voxtrel::platform {
namespace {

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

// What the control says of itself. The name that its program has given it is better than its caption, but
// what it holds is no name.
AccessibleObject Named(StandardControl control, AccessibleAnswer& answer)
{
    AccessibleObject& object = control.object;
    if (answer.deepest && !control.isItem && answer.object.name != object.value)
        object.name = std::move(answer.object.name);
    // What has neither name nor label is named by what it holds.
    if (object.name.empty())
        object.name = std::exchange(object.value, {});
    return std::move(object);
}

} // namespace

WindowsAccessibleSource::WindowsAccessibleSource(const MakeClient& makeClient)
    : uia_(makeClient()), parent_(ParentProcess())
{
}

std::optional<AccessibleObject> WindowsAccessibleSource::ObjectAt(ScreenPoint point,
                                                                  std::chrono::milliseconds time)
{
    const HWND window = WindowFromPoint({point.x, point.y});
    if (!window || window == GetDesktopWindow() || IsOurCharacter(window))
        return AccessibleObject{};
    // Active Accessibility knows no deadline: a window that does not answer a message is not asked.
    const Deadline deadline(time);
    ControlQuestions questions(deadline);
    questions.Ask(window, WM_NULL);
    if (questions.Unanswered())
        return std::nullopt;

    AccessibleAnswer uia = uia_.ObjectAt(point, deadline);
    if (uia.IsFinal())
        return std::move(uia.object);
    const HWND framed = WindowFramedBy(window, point);
    AccessibleAnswer msaa = MsaaObjectAt(point, framed, deadline);
    if (msaa.IsFinal())
        return std::move(msaa.object);
    auto control = StandardControlAt(questions, framed ? framed : window, point);
    if (deadline.IsOver() || questions.Unanswered())
        return std::nullopt;
    AccessibleObject object = control ? Named(std::move(*control), msaa) : AccessibleObject{};
    for (AccessibleAnswer* around : {&uia, &msaa}) {
        if (object.name.empty())
            object = std::move(around->object);
    }
    return object;
}

// The character and its balloon come and go under the pointer while they speak: they are not to be
// interrupted by their own words.
bool WindowsAccessibleSource::IsOurCharacter(HWND window) const
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

} // namespace voxtrel::platform
