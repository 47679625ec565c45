#include "platform/windows/control_items.h"

#include "platform/readable_text.h"

#include <commctrl.h>
#include <oleacc.h>

#include <utility>

namespace voxtrel::platform {
namespace {

// The picture beside an item that stands for its tick: the first for one that is not ticked.
SwitchState TickOf(UINT itemState)
{
    switch ((itemState & LVIS_STATEIMAGEMASK) >> 12) {
    case 1:
        return SwitchState::Unchecked;
    case 2:
        return SwitchState::Checked;
    default:
        return SwitchState::None;
    }
}
static_assert(LVIS_STATEIMAGEMASK == TVIS_STATEIMAGEMASK);

std::optional<AccessibleObject> Item(const std::wstring& text, long role,
                                     SwitchState state = SwitchState::None)
{
    std::wstring name = ReadableText(text, kLongestText);
    if (name.empty())
        return std::nullopt;
    return AccessibleObject{.name = std::move(name), .role = RoleText(role), .state = state};
}

std::wstring CellText(ControlQuestions& questions, HWND list, int item, int column)
{
    LVITEMW cell = {};
    cell.iSubItem = column;
    const auto answer = questions.AskForText(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(item), cell,
                                             &LVITEMW::pszText, &LVITEMW::cchTextMax);
    return answer ? answer->text : std::wstring();
}

// Many tool bars show pictures only; what they stand for is told by the tip that comes up.
std::wstring TipOf(ControlQuestions& questions, HWND toolbar, int command)
{
    const auto tips = reinterpret_cast<HWND>(questions.Ask(toolbar, TB_GETTOOLTIPS));
    if (!tips)
        return {};
    TTTOOLINFOW tool = {};
    tool.cbSize = sizeof tool;
    tool.hwnd = toolbar;
    tool.uId = static_cast<UINT_PTR>(command);
    const auto told = questions.AskForText(tips, TTM_GETTEXTW, ControlQuestions::kRoomForText, tool,
                                           &TTTOOLINFOW::lpszText);
    return told ? told->text : std::wstring();
}

SwitchState StateOf(const TBBUTTON& button)
{
    if ((button.fsStyle & BTNS_CHECK) == 0)
        return SwitchState::None;
    return (button.fsState & TBSTATE_CHECKED) != 0 ? SwitchState::Pressed : SwitchState::Released;
}

} // namespace

std::optional<AccessibleObject> TreeItem(ControlQuestions& questions, HWND tree, POINT point)
{
    TVHITTESTINFO hit = {};
    hit.pt = point;
    const auto found = questions.AskWith(tree, TVM_HITTEST, 0, hit);
    if (!found || !found->record.hItem)
        return std::nullopt;
    TVITEMW item = {};
    item.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_STATE;
    item.hItem = found->record.hItem;
    item.stateMask = TVIS_STATEIMAGEMASK;
    const auto told =
        questions.AskForText(tree, TVM_GETITEMW, 0, item, &TVITEMW::pszText, &TVITEMW::cchTextMax);
    if (!told || !told->result)
        return std::nullopt;
    const bool ticked = (GetWindowLongW(tree, GWL_STYLE) & TVS_CHECKBOXES) != 0;
    return Item(told->text, ROLE_SYSTEM_OUTLINEITEM, ticked ? TickOf(told->record.state) : SwitchState::None);
}

std::optional<AccessibleObject> ListViewItem(ControlQuestions& questions, HWND list, POINT point)
{
    LVHITTESTINFO hit = {};
    hit.pt = point;
    const auto found = questions.AskWith(list, LVM_SUBITEMHITTEST, 0, hit);
    if (!found || found->result < 0)
        return std::nullopt;
    const int item = found->record.iItem;
    const int column = found->record.iSubItem;
    if (column > 0) {
        if (auto cell = Item(CellText(questions, list, item, column), ROLE_SYSTEM_CELL))
            return cell;
    }
    SwitchState tick = SwitchState::None;
    if ((questions.Ask(list, LVM_GETEXTENDEDLISTVIEWSTYLE) & LVS_EX_CHECKBOXES) != 0)
        tick = TickOf(static_cast<UINT>(
            questions.Ask(list, LVM_GETITEMSTATE, static_cast<WPARAM>(item), LVIS_STATEIMAGEMASK)));
    return Item(CellText(questions, list, item, 0), ROLE_SYSTEM_LISTITEM, tick);
}

std::optional<AccessibleObject> ColumnHeader(ControlQuestions& questions, HWND header, POINT point)
{
    HDHITTESTINFO hit = {};
    hit.pt = point;
    const auto found = questions.AskWith(header, HDM_HITTEST, 0, hit);
    if (!found || found->result < 0)
        return std::nullopt;
    HDITEMW column = {};
    column.mask = HDI_TEXT;
    const auto told = questions.AskForText(header, HDM_GETITEMW, static_cast<WPARAM>(found->result), column,
                                           &HDITEMW::pszText, &HDITEMW::cchTextMax);
    return told && told->result ? Item(told->text, ROLE_SYSTEM_COLUMNHEADER) : std::nullopt;
}

std::optional<AccessibleObject> TabOfPages(ControlQuestions& questions, HWND tabs, POINT point)
{
    TCHITTESTINFO hit = {};
    hit.pt = point;
    const auto found = questions.AskWith(tabs, TCM_HITTEST, 0, hit);
    if (!found || found->result < 0)
        return std::nullopt;
    TCITEMW tab = {};
    tab.mask = TCIF_TEXT;
    const auto told = questions.AskForText(tabs, TCM_GETITEMW, static_cast<WPARAM>(found->result), tab,
                                           &TCITEMW::pszText, &TCITEMW::cchTextMax);
    return told && told->result ? Item(WithoutMnemonics(told->text), ROLE_SYSTEM_PAGETAB) : std::nullopt;
}

std::optional<AccessibleObject> ToolbarButton(ControlQuestions& questions, HWND toolbar, POINT point)
{
    const auto found = questions.AskWith(toolbar, TB_HITTEST, 0, point);
    // Separators, and the room between the buttons, are told by numbers below zero.
    if (!found || found->result < 0)
        return std::nullopt;
    const auto told =
        questions.AskWith(toolbar, TB_GETBUTTON, static_cast<WPARAM>(found->result), TBBUTTON{});
    if (!told || !told->result)
        return std::nullopt;
    const TBBUTTON& button = told->record;
    const auto command = static_cast<WPARAM>(button.idCommand);
    std::wstring name;
    const LRESULT length = questions.Ask(toolbar, TB_GETBUTTONTEXTW, command, 0);
    if (length > 0)
        name =
            questions.AskForBareText(toolbar, TB_GETBUTTONTEXTW, command, static_cast<std::size_t>(length));
    if (name.empty())
        name = TipOf(questions, toolbar, button.idCommand);
    return Item(WithoutMnemonics(name), ROLE_SYSTEM_PUSHBUTTON, StateOf(button));
}

std::optional<AccessibleObject> StatusBarPart(ControlQuestions& questions, HWND bar, POINT point)
{
    const auto part = [&]() -> std::optional<WPARAM> {
        if (questions.Ask(bar, SB_ISSIMPLE) != 0)
            return SB_SIMPLEID;
        const auto parts = static_cast<WPARAM>(questions.Ask(bar, SB_GETPARTS));
        for (WPARAM number = 0; number < parts; ++number) {
            const auto area = questions.AskWith(bar, SB_GETRECT, number, RECT{});
            if (area && PtInRect(&area->record, point))
                return number;
        }
        return std::nullopt;
    }();
    if (!part)
        return std::nullopt;
    const std::size_t length = LOWORD(questions.Ask(bar, SB_GETTEXTLENGTHW, *part));
    return Item(questions.AskForBareText(bar, SB_GETTEXTW, *part, length), ROLE_SYSTEM_STATICTEXT);
}

std::optional<AccessibleObject> ListBoxItem(ControlQuestions& questions, HWND list, POINT point)
{
    // A list that draws its items need not have texts for them.
    const LONG style = GetWindowLongW(list, GWL_STYLE);
    if ((style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)) != 0 && (style & LBS_HASSTRINGS) == 0)
        return std::nullopt;
    const auto answer =
        static_cast<DWORD>(questions.Ask(list, LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y)));
    const WPARAM item = LOWORD(answer);
    const bool outside = HIWORD(answer) != 0;
    const LRESULT length = questions.Ask(list, LB_GETTEXTLEN, item);
    if (outside || length <= 0 || static_cast<std::size_t>(length) > kLongestText)
        return std::nullopt;
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    questions.Ask(list, LB_GETTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return Item(text, ROLE_SYSTEM_LISTITEM);
}

} // namespace voxtrel::platform
