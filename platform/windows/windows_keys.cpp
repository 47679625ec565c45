// Typing while the user holds keys down.
//
// The hot key's own Ctrl is still down when the copy keystroke is typed, and perhaps Shift or Alt beside it.
// The user's Ctrl is left alone: the keystroke comes with the other Ctrl key. The other modifiers are let go
// before and pressed again behind the keystroke. All of it is one insertion, which the system never mixes
// with what the user does meanwhile.

#include "platform/windows/windows_keys.h"

#include "platform/windows/windows_headers.h"

#include <vector>

namespace voxtrel::platform {
namespace {

constexpr UINT kTimeToTakeMs = 1000;
constexpr int kLastVirtualKey = 254;

constexpr WORD kOtherModifiers[] = {VK_LSHIFT, VK_RSHIFT, VK_LMENU, VK_RMENU, VK_LWIN, VK_RWIN};

bool IsDown(int key) { return ::GetAsyncKeyState(key) < 0; }

// The right Shift key is no extended key, but without the flag it is taken for the left one.
bool IsExtended(WORD key)
{
    return key == VK_INSERT || key == VK_RSHIFT || key == VK_RCONTROL || key == VK_RMENU || key == VK_LWIN ||
           key == VK_RWIN;
}

INPUT Stroke(WORD key, bool press)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (press ? 0 : KEYEVENTF_KEYUP) | (IsExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0);
    return input;
}

WORD KeyWithCtrl(std::wstring_view keys)
{
    if (keys == kCtrlInsert)
        return VK_INSERT;
    return keys == kCtrlC ? WORD{'C'} : WORD{0};
}

std::vector<INPUT> Plan(WORD key)
{
    const bool userHoldsBoth = IsDown(VK_LCONTROL) && IsDown(VK_RCONTROL);
    const WORD ctrl = IsDown(VK_LCONTROL) ? VK_RCONTROL : VK_LCONTROL;
    std::vector<INPUT> strokes;
    if (!userHoldsBoth)
        strokes.push_back(Stroke(ctrl, true));
    std::vector<INPUT> again;
    for (const WORD modifier : kOtherModifiers) {
        if (!IsDown(modifier))
            continue;
        strokes.push_back(Stroke(modifier, false));
        again.push_back(Stroke(modifier, true));
    }
    strokes.push_back(Stroke(key, true));
    strokes.push_back(Stroke(key, false));
    // Ctrl goes last: a lone Alt or system key would open a menu.
    strokes.insert(strokes.end(), again.begin(), again.end());
    if (!userHoldsBoth)
        strokes.push_back(Stroke(ctrl, false));
    return strokes;
}

} // namespace

short WindowsKeyboard::GetAsyncKeyState(int virtualKey)
{
    return virtualKey > 0 && virtualKey <= kLastVirtualKey ? ::GetAsyncKeyState(virtualKey) : short{0};
}

bool WindowsKeystrokes::SendKeys(std::wstring_view keys, NativeWindow window)
{
    const WORD key = KeyWithCtrl(keys);
    const HWND target = reinterpret_cast<HWND>(window);
    if (key == 0 || window == 0 || ::GetForegroundWindow() != target)
        return false;
    std::vector<INPUT> strokes = Plan(key);
    if (SendInput(static_cast<UINT>(strokes.size()), strokes.data(), sizeof(INPUT)) == 0)
        return false; // a program with higher rights is in front
    // Its answer says that the window takes messages again; whether it has copied is seen on the clipboard.
    DWORD_PTR result = 0;
    SendMessageTimeoutW(target, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kTimeToTakeMs, &result);
    return true;
}

} // namespace voxtrel::platform
