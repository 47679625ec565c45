#include "platform/windows/standard_control.h"

#include "platform/readable_text.h"
#include "platform/windows/control_items.h"

#include <commctrl.h>
#include <oleacc.h>
#include <richedit.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace voxtrel::platform {
namespace {

constexpr int kMaxDepth = 20;

using Questions = ControlQuestions;

std::wstring Caption(Questions& questions, HWND window)
{
    return WithoutMnemonics(TextOf(questions, window));
}

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
std::wstring LabelBefore(Questions& questions, HWND control)
{
    const HWND label = GetWindow(control, GW_HWNDPREV);
    return label && IsClass(label, L"Static") ? Caption(questions, label) : std::wstring();
}

SwitchState BoxState(Questions& questions, HWND button)
{
    switch (questions.Ask(button, BM_GETCHECK)) {
    case BST_CHECKED:
        return SwitchState::Checked;
    case BST_INDETERMINATE:
        return SwitchState::PartlyChecked;
    default:
        return SwitchState::Unchecked;
    }
}

std::optional<StandardControl> Button(Questions& questions, HWND button, POINT)
{
    AccessibleObject object{.name = Caption(questions, button)};
    const LONG style = GetWindowLongW(button, GWL_STYLE);
    switch (style & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE:
        object.role = RoleText(ROLE_SYSTEM_CHECKBUTTON);
        object.state = BoxState(questions, button);
        if ((style & BS_PUSHLIKE) != 0)
            object.state =
                object.state == SwitchState::Checked ? SwitchState::Pressed : SwitchState::Released;
        break;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        object.role = RoleText(ROLE_SYSTEM_RADIOBUTTON);
        object.state = BoxState(questions, button);
        break;
    case BS_GROUPBOX:
        object.role = RoleText(ROLE_SYSTEM_GROUPING);
        break;
    default:
        object.role = RoleText(ROLE_SYSTEM_PUSHBUTTON);
    }
    return StandardControl{std::move(object)};
}

std::optional<StandardControl> Label(Questions& questions, HWND label, POINT)
{
    return StandardControl{{.name = Caption(questions, label), .role = RoleText(ROLE_SYSTEM_STATICTEXT)}};
}

StandardControl Labelled(Questions& questions, HWND control, long role, std::wstring value)
{
    return {{.name = LabelBefore(questions, control), .role = RoleText(role), .value = std::move(value)}};
}

std::optional<StandardControl> ComboBox(Questions& questions, HWND box, POINT)
{
    std::wstring selected = TextOf(questions, box);
    const HWND field = FindWindowExW(box, nullptr, WC_EDITW, nullptr);
    if (selected.empty() && field)
        selected = TextOf(questions, field);
    // The extended combo box is a window around a plain one.
    const HWND around = GetParent(box);
    return Labelled(questions, IsClass(around, WC_COMBOBOXEXW) ? around : box, ROLE_SYSTEM_COMBOBOX,
                    std::move(selected));
}

std::optional<StandardControl> LineOfText(Questions& questions, HWND field, LRESULT line)
{
    std::wstring text(2 * kLongestLine, L'\0');
    text.front() = static_cast<wchar_t>(text.size()); // where the message looks for the room there is
    const LRESULT taken =
        questions.Ask(field, EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text.data()));
    text.resize(std::min(text.size(), static_cast<std::size_t>(taken)));
    return StandardControl{{.name = ReadableText(text, kLongestLine), .role = RoleText(ROLE_SYSTEM_TEXT)},
                           true};
}

bool HasStyle(HWND window, LONG style) { return (GetWindowLongW(window, GWL_STYLE) & style) != 0; }

// The arrows that count up and down what stands in the field.
HWND ArrowsOf(Questions& questions, HWND field)
{
    const HWND next = GetWindow(field, GW_HWNDNEXT);
    const bool belongs = next && IsClass(next, UPDOWN_CLASSW) &&
                         reinterpret_cast<HWND>(questions.Ask(next, UDM_GETBUDDY)) == field;
    return belongs ? next : nullptr;
}

std::optional<StandardControl> Field(Questions& questions, HWND field, POINT point)
{
    if (HasStyle(field, ES_PASSWORD))
        return Labelled(questions, field, ROLE_SYSTEM_TEXT, {});
    if (HasStyle(field, ES_MULTILINE)) {
        const auto place =
            static_cast<DWORD>(questions.Ask(field, EM_CHARFROMPOS, 0, MAKELPARAM(point.x, point.y)));
        return LineOfText(questions, field, HIWORD(place));
    }
    const HWND around = GetParent(field);
    if (around && IsClass(around, WC_COMBOBOXW))
        return ComboBox(questions, around, point);
    return Labelled(questions, field, ArrowsOf(questions, field) ? ROLE_SYSTEM_SPINBUTTON : ROLE_SYSTEM_TEXT,
                    TextOf(questions, field));
}

std::optional<StandardControl> Arrows(Questions& questions, HWND arrows, POINT point)
{
    const auto field = reinterpret_cast<HWND>(questions.Ask(arrows, UDM_GETBUDDY));
    return field && IsClass(field, WC_EDITW) ? Field(questions, field, point) : std::nullopt;
}

std::optional<StandardControl> RichEditLine(Questions& questions, HWND field, POINT point)
{
    if (HasStyle(field, ES_PASSWORD) || !HasStyle(field, ES_MULTILINE))
        return std::nullopt;
    const auto place = questions.AskWith(field, EM_CHARFROMPOS, 0, POINTL{point.x, point.y});
    if (!place)
        return std::nullopt;
    return LineOfText(questions, field, questions.Ask(field, EM_EXLINEFROMCHAR, 0, place->result));
}

std::optional<StandardControl> Slider(Questions& questions, HWND slider, POINT)
{
    return Labelled(questions, slider, ROLE_SYSTEM_SLIDER,
                    std::to_wstring(questions.Ask(slider, TBM_GETPOS)));
}

std::wstring PercentOf(Questions& questions, HWND progressBar)
{
    const LRESULT least = questions.Ask(progressBar, PBM_GETRANGE, TRUE);
    const LRESULT most = questions.Ask(progressBar, PBM_GETRANGE, FALSE);
    if (most <= least)
        return {};
    return std::to_wstring((questions.Ask(progressBar, PBM_GETPOS) - least) * 100 / (most - least)) + L"%";
}

std::optional<StandardControl> ProgressBar(Questions& questions, HWND bar, POINT)
{
    return Labelled(questions, bar, ROLE_SYSTEM_PROGRESSBAR, PercentOf(questions, bar));
}

template <std::optional<AccessibleObject> (*Read)(Questions&, HWND, POINT)>
std::optional<StandardControl> ItemBy(Questions& questions, HWND control, POINT point)
{
    auto item = Read(questions, control, point);
    return item ? std::optional(StandardControl{std::move(*item), true}) : std::nullopt;
}

struct ControlReader {
    const wchar_t* windowClass;
    std::optional<StandardControl> (*read)(Questions&, HWND, POINT inClient);
};

constexpr ControlReader kControlReaders[] = {
    {L"Button", Button},
    {L"Static", Label},
    {WC_COMBOBOXW, ComboBox},
    {WC_EDITW, Field},
    {UPDOWN_CLASSW, Arrows},
    {L"RichEdit20A", RichEditLine},
    {L"RichEdit20W", RichEditLine},
    {L"RICHEDIT50W", RichEditLine},
    {L"ListBox", ItemBy<ListBoxItem>},
    {L"ComboLBox", ItemBy<ListBoxItem>},
    {TRACKBAR_CLASSW, Slider},
    {PROGRESS_CLASSW, ProgressBar},
    {WC_TREEVIEWW, ItemBy<TreeItem>},
    {WC_LISTVIEWW, ItemBy<ListViewItem>},
    {WC_HEADERW, ItemBy<ColumnHeader>},
    {WC_TABCONTROLW, ItemBy<TabOfPages>},
    {L"_wx_SysTabCtl32", ItemBy<TabOfPages>}, // in windows of wx, the program's own among them
    {TOOLBARCLASSNAMEW, ItemBy<ToolbarButton>},
    {STATUSCLASSNAMEW, ItemBy<StatusBarPart>},
};

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

std::optional<StandardControl> StandardControlAt(ControlQuestions& questions, HWND window, ScreenPoint point)
{
    const HWND control = DeepestWindow(window, point);
    const auto* const reader =
        std::find_if(std::begin(kControlReaders), std::end(kControlReaders),
                     [control](const ControlReader& one) { return IsClass(control, one.windowClass); });
    if (reader == std::end(kControlReaders))
        return std::nullopt;
    POINT inside{point.x, point.y};
    ScreenToClient(control, &inside);
    return reader->read(questions, control, inside);
}

} // namespace voxtrel::platform
