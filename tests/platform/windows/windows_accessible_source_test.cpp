// What is told of the system's own controls, and which of the three ways to ask is believed.

#include "platform/windows/windows_accessible_source.h"

#include "controls_window.h"
#include "fake_uia.h"
#include "platform/windows/control_questions.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <oleacc.h>
#include <richedit.h>
#include <uiautomationclient.h>

#include <chrono>
#include <future>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;
using tests::ControlsWindow;

constexpr auto kTime = 2000ms; // enough on a busy machine
constexpr RECT kPlace{10, 10, 210, 160};

class WindowsAccessibleSourceTest : public testing::Test {
protected:
    WindowsAccessibleSourceTest() { uia.answers = false; }
    ~WindowsAccessibleSourceTest() override { EXPECT_EQ(uia.References(), 0); }

    std::optional<AccessibleObject> Ask(ScreenPoint point, std::chrono::milliseconds time = kTime)
    {
        WindowsAccessibleSource source([this] { return uia.Pointer(); });
        return source.ObjectAt(point, time);
    }
    // The object at the middle of the control, or at a point of it.
    AccessibleObject At(HWND control)
    {
        return Ask(ControlsWindow::MiddleOf(control)).value_or(AccessibleObject{});
    }
    AccessibleObject At(HWND control, int x, int y)
    {
        return Ask(ControlsWindow::On(control, x, y)).value_or(AccessibleObject{});
    }

    static AccessibleObject Item(const wchar_t* name, long role, SwitchState state = SwitchState::None)
    {
        return {.name = name, .role = RoleText(role), .state = state};
    }

    tests::FakeClient uia;
    ControlsWindow window;
};

TEST_F(WindowsAccessibleSourceTest, BelievesUiAutomationFirst)
{
    const HWND button = window.Add(WC_BUTTONW, L"Save", BS_PUSHBUTTON, kPlace);
    tests::FakeElement element;
    element.Set(UIA_ControlTypePropertyId, 50000L)
        .Set(UIA_NamePropertyId, L"Save all")
        .Set(UIA_LocalizedControlTypePropertyId, L"button");
    uia.answers = true;
    uia.deepest = &element;
    EXPECT_EQ(At(button), (AccessibleObject{.name = L"Save all", .role = L"button"}));
    EXPECT_EQ(element.references, 0);
}

TEST_F(WindowsAccessibleSourceTest, AsksTheOlderWaysWhereUiAutomationDoesNotAnswer)
{
    const HWND button = window.Add(WC_BUTTONW, L"&Save", BS_PUSHBUTTON, kPlace);
    EXPECT_EQ(At(button), Item(L"Save", ROLE_SYSTEM_PUSHBUTTON));
}

TEST_F(WindowsAccessibleSourceTest, AsksTheOlderWaysWhereUiAutomationKnowsAWindowOnly)
{
    const HWND list = window.Add(WC_LISTBOXW, L"", 0, kPlace);
    window.Do([&] { SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"First")); });
    tests::FakeElement pane;
    pane.Set(UIA_ControlTypePropertyId, 50033L).Set(UIA_NamePropertyId, L"Controls");
    uia.answers = true;
    uia.deepest = &pane;
    EXPECT_EQ(At(list, 10, 5), Item(L"First", ROLE_SYSTEM_LISTITEM));
    EXPECT_EQ(At(list, 10, 140).name, L"Controls") << "below the items the window is all there is";
}

TEST_F(WindowsAccessibleSourceTest, AHangingProviderEndsWithTheDeadline)
{
    const HWND button = window.Add(WC_BUTTONW, L"Save", BS_PUSHBUTTON, kPlace);
    tests::FakeElement element;
    uia.answers = true;
    uia.deepest = &element;
    // As the system does with the time that the call was given.
    uia.beforeAnswer = [this] { Sleep(uia.transactionTimeout); };
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(Ask(ControlsWindow::MiddleOf(button), 300ms), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - began, 1s);
    EXPECT_GE(uia.transactionTimeout, 1u);
}

TEST_F(WindowsAccessibleSourceTest, AFrozenProgramEndsWithTheDeadline)
{
    const HWND tree = window.Add(WC_TREEVIEWW, L"", 0, kPlace);
    const ScreenPoint point = ControlsWindow::MiddleOf(tree);
    window.Freeze();
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(Ask(point, 300ms), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - began, 2s);
    window.Wake();
    EXPECT_TRUE(Ask(point)) << "it answers again";
}

TEST_F(WindowsAccessibleSourceTest, ItemsOfATreeAndTheirTicks)
{
    const HWND tree = window.Add(WC_TREEVIEWW, L"", TVS_HASLINES | TVS_CHECKBOXES, kPlace);
    int height = 0;
    window.Do([&] {
        UpdateWindow(tree); // some systems make the boxes when they first draw the tree
        for (const wchar_t* name : {L"Animals", L"Plants"}) {
            TVINSERTSTRUCTW item{};
            item.hParent = TVI_ROOT;
            item.hInsertAfter = TVI_LAST;
            item.item.mask = TVIF_TEXT;
            item.item.pszText = const_cast<LPWSTR>(name);
            const auto added = reinterpret_cast<HTREEITEM>(
                SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
            TVITEMW tick{};
            tick.mask = TVIF_HANDLE | TVIF_STATE;
            tick.hItem = added;
            tick.stateMask = TVIS_STATEIMAGEMASK;
            tick.state = INDEXTOSTATEIMAGEMASK(name[0] == L'P' ? 2 : 1);
            SendMessageW(tree, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&tick));
        }
        height = static_cast<int>(SendMessageW(tree, TVM_GETITEMHEIGHT, 0, 0));
    });
    EXPECT_EQ(At(tree, 60, height / 2), Item(L"Animals", ROLE_SYSTEM_OUTLINEITEM, SwitchState::Unchecked));
    EXPECT_EQ(At(tree, 60, height + height / 2),
              Item(L"Plants", ROLE_SYSTEM_OUTLINEITEM, SwitchState::Checked));
    EXPECT_NE(At(tree, 60, 140).name, L"Plants");
}

TEST_F(WindowsAccessibleSourceTest, ItemsCellsAndHeadersOfATable)
{
    const HWND list = window.Add(WC_LISTVIEWW, L"", LVS_REPORT, kPlace);
    RECT row{};
    window.Do([&] {
        SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
        int number = 0;
        for (const wchar_t* title : {L"File", L"Size"}) {
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.cx = 80;
            column.pszText = const_cast<LPWSTR>(title);
            SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(number++),
                         reinterpret_cast<LPARAM>(&column));
        }
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.pszText = const_cast<LPWSTR>(L"note.txt");
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        item.iSubItem = 1;
        item.pszText = const_cast<LPWSTR>(L"12 KB");
        SendMessageW(list, LVM_SETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
        LVITEMW tick{};
        tick.stateMask = LVIS_STATEIMAGEMASK;
        tick.state = INDEXTOSTATEIMAGEMASK(2);
        SendMessageW(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&tick));
        row.left = LVIR_BOUNDS;
        SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    });
    const int middle = static_cast<int>(row.top + row.bottom) / 2;
    EXPECT_EQ(At(list, 40, middle), Item(L"note.txt", ROLE_SYSTEM_LISTITEM, SwitchState::Checked));
    EXPECT_EQ(At(list, 120, middle), Item(L"12 KB", ROLE_SYSTEM_CELL));
    EXPECT_EQ(At(list, 120, static_cast<int>(row.top) / 2), Item(L"Size", ROLE_SYSTEM_COLUMNHEADER));
}

TEST_F(WindowsAccessibleSourceTest, TabsOfPages)
{
    const HWND tabs = window.Add(WC_TABCONTROLW, L"", 0, kPlace);
    RECT second{};
    window.Do([&] {
        int number = 0;
        for (const wchar_t* title : {L"&Voice", L"&Balloon"}) {
            TCITEMW tab{};
            tab.mask = TCIF_TEXT;
            tab.pszText = const_cast<LPWSTR>(title);
            SendMessageW(tabs, TCM_INSERTITEMW, static_cast<WPARAM>(number++),
                         reinterpret_cast<LPARAM>(&tab));
        }
        SendMessageW(tabs, TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
    });
    EXPECT_EQ(At(tabs, static_cast<int>(second.left) + 5, static_cast<int>(second.top) + 5),
              Item(L"Balloon", ROLE_SYSTEM_PAGETAB));
}

TEST_F(WindowsAccessibleSourceTest, ButtonsOfAToolBarByTextOrTip)
{
    const HWND bar =
        window.Add(TOOLBARCLASSNAMEW, L"", TBSTYLE_TOOLTIPS | TBSTYLE_LIST | CCS_NORESIZE, kPlace);
    RECT places[2] = {};
    window.Do([&] {
        SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        SendMessageW(bar, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
        TBBUTTON buttons[2] = {};
        buttons[0] = {I_IMAGENONE, 7, TBSTATE_ENABLED | TBSTATE_CHECKED,  BTNS_CHECK | BTNS_SHOWTEXT,
                      {},          0, reinterpret_cast<INT_PTR>(L"&Grid")};
        buttons[1] = {0, 8, TBSTATE_ENABLED, BTNS_BUTTON, {}, 0, 0};
        SendMessageW(bar, TB_ADDBUTTONSW, 2, reinterpret_cast<LPARAM>(buttons));
        for (WPARAM i = 0; i < 2; ++i)
            SendMessageW(bar, TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&places[i]));
    });
    EXPECT_EQ(At(bar, static_cast<int>(places[0].left) + 4, 8),
              Item(L"Grid", ROLE_SYSTEM_PUSHBUTTON, SwitchState::Pressed));
    EXPECT_EQ(At(bar, static_cast<int>(places[1].left) + 4, 8),
              Item(L"Open a drawing", ROLE_SYSTEM_PUSHBUTTON));
}

TEST_F(WindowsAccessibleSourceTest, PartsOfAStatusBar)
{
    const HWND bar = window.Add(STATUSCLASSNAMEW, L"", CCS_NORESIZE, {0, 200, 400, 220});
    window.Do([&] {
        const int ends[] = {100, 300};
        SendMessageW(bar, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(ends));
        SendMessageW(bar, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(L"Ready"));
        SendMessageW(bar, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(L"Line 12"));
    });
    EXPECT_EQ(At(bar, 20, 8), Item(L"Ready", ROLE_SYSTEM_STATICTEXT));
    EXPECT_EQ(At(bar, 200, 8), Item(L"Line 12", ROLE_SYSTEM_STATICTEXT));
}

TEST_F(WindowsAccessibleSourceTest, TheLineOfARichText)
{
    LoadLibraryW(L"riched20.dll");
    const HWND field = window.Add(RICHEDIT_CLASSW, L"The first line\r\nand the second", ES_MULTILINE, kPlace);
    POINTL second{};
    window.Do([&] {
        const auto start = SendMessageW(field, EM_LINEINDEX, 1, 0);
        SendMessageW(field, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&second), start);
    });
    EXPECT_EQ(At(field, 20, 5).name, L"The first line");
    EXPECT_EQ(At(field, 20, static_cast<int>(second.y) + 5).name, L"and the second");
}

TEST_F(WindowsAccessibleSourceTest, FieldsBoxesAndSlidersAreNamedByTheLabelBefore)
{
    window.Add(WC_STATICW, L"&Loudness:", 0, {220, 10, 300, 30});
    const HWND slider = window.Add(TRACKBAR_CLASSW, L"", 0, {220, 40, 380, 70});
    window.Do([&] { SendMessageW(slider, TBM_SETPOS, TRUE, 40); });
    EXPECT_EQ(At(slider),
              (AccessibleObject{.name = L"Loudness:", .role = RoleText(ROLE_SYSTEM_SLIDER), .value = L"40"}));

    window.Add(WC_STATICW, L"Paint:", 0, {220, 80, 300, 100});
    const HWND box = window.Add(WC_COMBOBOXW, L"", CBS_DROPDOWNLIST, {220, 110, 380, 200});
    window.Do([&] {
        for (const wchar_t* color : {L"Red", L"Green"})
            SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(color));
        SendMessageW(box, CB_SETCURSEL, 1, 0);
    });
    EXPECT_EQ(At(box).name, L"Paint:");
    EXPECT_EQ(At(box).value, L"Green");
}

TEST_F(WindowsAccessibleSourceTest, APasswordIsNotTold)
{
    window.Add(WC_STATICW, L"Secret:", 0, {220, 10, 300, 30});
    const HWND field = window.Add(WC_EDITW, L"hunter2", ES_PASSWORD, {220, 40, 380, 70});
    const AccessibleObject object = At(field);
    EXPECT_EQ(object.value, L"");
    EXPECT_EQ(object.name.find(L"hunter"), std::wstring::npos);
}

TEST_F(WindowsAccessibleSourceTest, AListThatDrawsItsItemsHasNoTexts)
{
    const HWND list = window.Add(WC_LISTBOXW, L"", LBS_OWNERDRAWFIXED, kPlace);
    window.Do([&] { SendMessageW(list, LB_ADDSTRING, 0, 0x41424344); });
    EXPECT_NE(At(list, 10, 5).role, RoleText(ROLE_SYSTEM_LISTITEM));
}

} // namespace
} // namespace voxtrel::platform
