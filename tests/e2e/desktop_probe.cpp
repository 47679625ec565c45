// Tells what is on the desktop, as another program sees it. Reads a command a line from standard input and
// answers each with one line of UTF-8, parts of it separated by tabs.
//
//   foreground       the title of the foreground window
//   focus            the accessible name of the control that has the keyboard
//   buttons TITLE    the accessible names of the push buttons of the top window with that title, in tab order
//   place LEFT TOP WIDTH HEIGHT TITLE   moves the top window with that title there
//   menu             whether one is open or closed
//   at X Y           the title of the top window that a click at that place goes to
//   styles TITLE     which of "topmost" and "taskbar" the top window with that title is: above the others,
//   and in the
//                    task bar

#include <windows.h>

#include <oleacc.h>

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string Utf8(std::wstring_view text)
{
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

std::wstring TitleOf(HWND window)
{
    std::wstring title(256, L'\0');
    title.resize(
        static_cast<std::size_t>(GetWindowTextW(window, title.data(), static_cast<int>(title.size()))));
    return title;
}

std::wstring AccessibleName(HWND window)
{
    IAccessible* accessible = nullptr;
    if (AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   reinterpret_cast<void**>(&accessible)) != S_OK)
        return {};
    VARIANT self = {};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    BSTR text = nullptr;
    std::wstring name;
    if (accessible->get_accName(self, &text) == S_OK && text)
        name = text;
    SysFreeString(text);
    accessible->Release();
    return name;
}

std::wstring FocusedName()
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    if (!GetGUIThreadInfo(GetWindowThreadProcessId(GetForegroundWindow(), nullptr), &info) || !info.hwndFocus)
        return {};
    return AccessibleName(info.hwndFocus);
}

BOOL CALLBACK AddButton(HWND window, LPARAM buttons)
{
    wchar_t className[16] = {};
    GetClassNameW(window, className, static_cast<int>(std::size(className)));
    if (std::wstring_view(className) == L"Button")
        reinterpret_cast<std::vector<HWND>*>(buttons)->push_back(window);
    return TRUE;
}

std::wstring ButtonsOf(const std::wstring& title)
{
    std::vector<HWND> buttons;
    EnumChildWindows(FindWindowW(nullptr, title.c_str()), AddButton, reinterpret_cast<LPARAM>(&buttons));
    std::wstring names;
    for (HWND button : buttons)
        names += (names.empty() ? L"" : L"\t") + AccessibleName(button);
    return names;
}

std::wstring Place(const std::string& where)
{
    std::istringstream words(where);
    int left = 0, top = 0, width = 0, height = 0;
    std::string title;
    words >> left >> top >> width >> height >> std::ws;
    std::getline(words, title);
    const std::wstring wide(title.begin(), title.end());
    const bool moved = SetWindowPos(FindWindowW(nullptr, wide.c_str()), nullptr, left, top, width, height,
                                    SWP_NOZORDER | SWP_NOACTIVATE);
    return moved ? L"placed" : L"no such window";
}

bool IsMenuOpen()
{
    HWND window = nullptr;
    do
        window = FindWindowExW(nullptr, window, L"#32768", nullptr);
    while (window && !IsWindowVisible(window));
    return window != nullptr;
}

std::wstring WindowAt(const std::string& where)
{
    std::istringstream words(where);
    POINT point = {};
    words >> point.x >> point.y;
    return TitleOf(GetAncestor(WindowFromPoint(point), GA_ROOT));
}

std::wstring StylesOf(const std::wstring& title)
{
    HWND window = FindWindowW(nullptr, title.c_str());
    const LONG_PTR styles = GetWindowLongPtrW(window, GWL_EXSTYLE);
    const bool owned = GetWindow(window, GW_OWNER) != nullptr;
    const bool inTaskBar = (styles & WS_EX_APPWINDOW) || (!owned && !(styles & WS_EX_TOOLWINDOW));
    return std::wstring(styles & WS_EX_TOPMOST ? L"topmost " : L"") + (inTaskBar ? L"taskbar" : L"");
}

std::wstring Answer(const std::string& command)
{
    constexpr std::string_view kButtons = "buttons ", kPlace = "place ", kAt = "at ", kStyles = "styles ";
    if (command == "foreground")
        return TitleOf(GetForegroundWindow());
    if (command == "focus")
        return FocusedName();
    if (command == "menu")
        return IsMenuOpen() ? L"open" : L"closed";
    if (command.starts_with(kAt))
        return WindowAt(command.substr(kAt.size()));
    if (command.starts_with(kStyles))
        return StylesOf(std::wstring(command.begin() + kStyles.size(), command.end()));
    if (command.starts_with(kPlace))
        return Place(command.substr(kPlace.size()));
    if (command.starts_with(kButtons))
        return ButtonsOf(std::wstring(command.begin() + kButtons.size(), command.end()));
    return L"?";
}

} // namespace

int main()
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    for (std::string command; std::getline(std::cin, command);) {
        if (!command.empty() && command.back() == '\r')
            command.pop_back();
        std::cout << Utf8(Answer(command)) << std::endl;
    }
    CoUninitialize();
}
