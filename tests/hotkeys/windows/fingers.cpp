// On Wine the keys must be those of the display: whenever one of its windows gets the focus there, which is
// some time after it has come to the front, Wine takes over which keys are down on the display, and what was
// inserted before is up again.

#include "fingers.h"

#include <gtest/gtest.h>

#include <string>

namespace voxtrel::platform::fingers {
namespace {

bool OnWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

const wchar_t* NameOnDisplay(WORD key)
{
    switch (key) {
    case VK_LCONTROL:
        return L"Control_L";
    case VK_RCONTROL:
        return L"Control_R";
    case VK_LSHIFT:
        return L"Shift_L";
    case VK_RSHIFT:
        return L"Shift_R";
    default:
        return L"F3";
    }
}

void StrokeOnDisplay(std::initializer_list<WORD> keys, const wchar_t* stroke)
{
    std::wstring command = L"xdotool";
    for (const WORD key : keys)
        command.append(L" ").append(stroke).append(L" ").append(NameOnDisplay(key));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(CreateProcessW(L"" VOXTREL_XDOTOOL, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &start, &process))
        << "xdotool: " << GetLastError();
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
}

void Insert(std::initializer_list<WORD> keys, DWORD flags)
{
    for (const WORD key : keys) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags | (key == VK_RSHIFT || key == VK_RCONTROL ? KEYEVENTF_EXTENDEDKEY : 0);
        SendInput(1, &input, sizeof input);
    }
}

} // namespace

void Press(std::initializer_list<WORD> keys)
{
    if (OnWine())
        StrokeOnDisplay(keys, L"keydown");
    else
        Insert(keys, 0);
}

void LetGo(std::initializer_list<WORD> keys)
{
    if (OnWine())
        StrokeOnDisplay(keys, L"keyup");
    else
        Insert(keys, KEYEVENTF_KEYUP);
}

} // namespace voxtrel::platform::fingers
