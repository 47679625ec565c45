#include "platform/windows/control_questions.h"

#include "platform/readable_text.h"
#include "platform/windows/foreign_memory.h"

#include <oleacc.h>

#include <algorithm>

namespace voxtrel::platform {
namespace {

constexpr int kLongestClassName = 256;

} // namespace

LRESULT ControlQuestions::Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const std::chrono::milliseconds left = deadline_.Left();
    if (unanswered_ || left.count() <= 0) {
        unanswered_ = true;
        return 0;
    }
    DWORD_PTR result = 0;
    SetLastError(ERROR_SUCCESS);
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG,
                            static_cast<UINT>(left.count()), &result) == 0) {
        unanswered_ = GetLastError() == ERROR_TIMEOUT;
        return 0;
    }
    return static_cast<LRESULT>(result);
}

bool ControlQuestions::Exchange(HWND window, UINT message, WPARAM wParam, Bytes record, LRESULT& result,
                                Text text)
{
    const std::size_t textSize = text.text ? kRoomForText * sizeof(wchar_t) : 0;
    ForeignMemory memory(window, record.size + textSize);
    if (!memory)
        return false;
    if (text.text)
        *text.pointer = static_cast<LPWSTR>(memory.At(record.size));
    if (!memory.Write(record.data, record.size))
        return false;
    result = Ask(window, message, wParam, reinterpret_cast<LPARAM>(memory.At(0)));
    if (unanswered_) {
        memory.LeaveBehind();
        return false;
    }
    if (!memory.Read(record.data, record.size))
        return false;
    if (text.text)
        *text.text = memory.TextAt(*text.pointer, kRoomForText);
    return true;
}

std::wstring ControlQuestions::AskForBareText(HWND window, UINT message, WPARAM wParam, std::size_t length)
{
    const std::size_t room = length + 1;
    ForeignMemory memory(window, room * sizeof(wchar_t));
    if (!memory)
        return {};
    Ask(window, message, wParam, reinterpret_cast<LPARAM>(memory.At(0)));
    if (unanswered_) {
        memory.LeaveBehind();
        return {};
    }
    return memory.TextAt(memory.At(0), room);
}

std::wstring ClassOf(HWND window)
{
    wchar_t name[kLongestClassName] = {};
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, kLongestClassName))};
}

bool IsClass(HWND window, std::wstring_view name)
{
    return lstrcmpiW(ClassOf(window).c_str(), std::wstring(name).c_str()) == 0;
}

std::wstring RoleText(long role)
{
    wchar_t text[kLongestLine] = {};
    return {text, GetRoleTextW(static_cast<DWORD>(role), text, kLongestLine)};
}

std::wstring WithoutMnemonics(std::wstring_view text)
{
    std::wstring plain(text);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (plain[i] == L'&')
            plain.erase(i, 1);
    }
    return plain;
}

std::wstring TextOf(ControlQuestions& questions, HWND window)
{
    const auto length = static_cast<std::size_t>(questions.Ask(window, WM_GETTEXTLENGTH));
    std::wstring text(std::min(length, kLongestText) + 1, L'\0');
    const LRESULT taken =
        questions.Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(std::min(text.size(), static_cast<std::size_t>(taken)));
    return ReadableText(text, kLongestText);
}

} // namespace voxtrel::platform
