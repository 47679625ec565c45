#include "platform/windows/standard_control.h"

#include "platform/readable_text.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <string>

namespace voxtrel::platform {
namespace {

constexpr UINT kTimeToAnswerMs = 100;
constexpr int kMaxDepth = 20;

// 0 also when the window does not answer.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kTimeToAnswerMs, &result) == 0)
        return 0;
    return static_cast<LRESULT>(result);
}

std::wstring RoleText(long role)
{
    wchar_t text[128] = {};
    return {text, GetRoleTextW(static_cast<DWORD>(role), text, static_cast<UINT>(std::size(text)))};
}

std::wstring TextOf(HWND window)
{
    const auto length = static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH));
    std::wstring text(std::min(length, kLongestText) + 1, L'\0');
    const LRESULT taken = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(taken));
    return ReadableText(text, kLongestText);
}

// The text without the mark of the letter that Alt reaches it with.
std::wstring Caption(HWND window)
{
    std::wstring text = TextOf(window);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&')
            text.erase(i, 1);
    }
    return text;
}

std::wstring ClassOf(HWND window)
{
    wchar_t name[128] = {};
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, static_cast<int>(std::size(name))))};
}

bool IsClass(HWND window, const wchar_t* name) { return lstrcmpiW(ClassOf(window).c_str(), name) == 0; }

bool IsGroupBox(HWND window)
{
    return (GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX && IsClass(window, L"Button");
}

// Labels let the pointer through to the window behind them.
HWND DeepestWindow(HWND window, ScreenPoint point)
{
    for (int depth = 0; depth < kMaxDepth; ++depth) {
        POINT inside{point.x, point.y};
        ScreenToClient(window, &inside);
        HWND child = RealChildWindowFromPoint(window, inside);
        if (!child || child == window)
            break;
        if (const HWND framed = WindowFramedBy(child, point))
            child = framed;
        window = child;
    }
    return window;
}

// What stands before a control that shows no caption of its own.
std::wstring LabelBefore(HWND control)
{
    const HWND label = GetWindow(control, GW_HWNDPREV);
    return label && IsClass(label, L"Static") ? Caption(label) : std::wstring();
}

SwitchState BoxState(HWND button)
{
    switch (Ask(button, BM_GETCHECK)) {
    case BST_CHECKED:
        return SwitchState::Checked;
    case BST_INDETERMINATE:
        return SwitchState::PartlyChecked;
    default:
        return SwitchState::Unchecked;
    }
}

AccessibleObject ButtonObject(HWND button)
{
    AccessibleObject object{.name = Caption(button)};
    const LONG style = GetWindowLongW(button, GWL_STYLE);
    switch (style & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE:
        object.role = RoleText(ROLE_SYSTEM_CHECKBUTTON);
        object.state = BoxState(button);
        if ((style & BS_PUSHLIKE) != 0)
            object.state =
                object.state == SwitchState::Checked ? SwitchState::Pressed : SwitchState::Released;
        break;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        object.role = RoleText(ROLE_SYSTEM_RADIOBUTTON);
        object.state = BoxState(button);
        break;
    case BS_GROUPBOX:
        object.role = RoleText(ROLE_SYSTEM_GROUPING);
        break;
    default:
        object.role = RoleText(ROLE_SYSTEM_PUSHBUTTON);
    }
    return object;
}

std::optional<StandardControl> ListItem(HWND list, POINT point)
{
    ScreenToClient(list, &point);
    const auto answer = static_cast<DWORD>(Ask(list, LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y)));
    const WPARAM item = LOWORD(answer);
    const bool outside = HIWORD(answer) != 0;
    const auto length = Ask(list, LB_GETTEXTLEN, item);
    if (outside || length <= 0 || static_cast<std::size_t>(length) > kLongestText)
        return std::nullopt;
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    Ask(list, LB_GETTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return StandardControl{{.name = ReadableText(text, kLongestText), .role = RoleText(ROLE_SYSTEM_LISTITEM)},
                           true};
}

// Of a text of several lines; a password is none.
std::optional<StandardControl> LineOfText(HWND field, POINT point)
{
    if ((GetWindowLongW(field, GWL_STYLE) & (ES_MULTILINE | ES_PASSWORD)) != ES_MULTILINE)
        return std::nullopt;
    ScreenToClient(field, &point);
    const auto place = static_cast<DWORD>(Ask(field, EM_CHARFROMPOS, 0, MAKELPARAM(point.x, point.y)));
    std::wstring text(2 * kLongestLine, L'\0');
    text.front() = static_cast<wchar_t>(text.size()); // where the message looks for the room there is
    const LRESULT taken = Ask(field, EM_GETLINE, HIWORD(place), reinterpret_cast<LPARAM>(text.data()));
    text.resize(std::min(text.size(), static_cast<std::size_t>(taken)));
    return StandardControl{{.name = ReadableText(text, kLongestLine), .role = RoleText(ROLE_SYSTEM_TEXT)},
                           true};
}

StandardControl Meter(HWND window, long role, std::wstring value)
{
    return {{.name = Caption(window), .role = RoleText(role), .value = std::move(value)}};
}

std::wstring PercentOf(HWND progressBar)
{
    const LRESULT least = Ask(progressBar, PBM_GETRANGE, TRUE);
    const LRESULT most = Ask(progressBar, PBM_GETRANGE, FALSE);
    if (most <= least)
        return {};
    return std::to_wstring((Ask(progressBar, PBM_GETPOS) - least) * 100 / (most - least)) + L"%";
}

} // namespace

HWND WindowFramedBy(HWND window, ScreenPoint point)
{
    RECT frame;
    if (!IsGroupBox(window) || !GetWindowRect(window, &frame))
        return nullptr;
    for (HWND other = GetWindow(window, GW_HWNDFIRST); other; other = GetWindow(other, GW_HWNDNEXT)) {
        RECT area;
        RECT common;
        if (IsWindowVisible(other) && !IsGroupBox(other) && GetWindowRect(other, &area) &&
            PtInRect(&area, {point.x, point.y}) && IntersectRect(&common, &area, &frame) &&
            EqualRect(&common, &area))
            return other;
    }
    return nullptr;
}

std::optional<StandardControl> StandardControlAt(HWND window, ScreenPoint point)
{
    const POINT there{point.x, point.y};
    const HWND control = DeepestWindow(window, point);
    if (IsClass(control, L"Button"))
        return StandardControl{ButtonObject(control)};
    if (IsClass(control, L"Static"))
        return StandardControl{{.name = Caption(control), .role = RoleText(ROLE_SYSTEM_STATICTEXT)}};
    if (IsClass(control, L"ComboBox"))
        return StandardControl{
            {.name = LabelBefore(control), .role = RoleText(ROLE_SYSTEM_COMBOBOX), .value = TextOf(control)}};
    if (IsClass(control, L"ListBox"))
        return ListItem(control, there);
    if (IsClass(control, L"Edit"))
        return LineOfText(control, there);
    if (IsClass(control, TRACKBAR_CLASSW))
        return Meter(control, ROLE_SYSTEM_SLIDER, std::to_wstring(Ask(control, TBM_GETPOS)));
    if (IsClass(control, PROGRESS_CLASSW))
        return Meter(control, ROLE_SYSTEM_PROGRESSBAR, PercentOf(control));
    return std::nullopt;
}

} // namespace voxtrel::platform
