#include "platform/linux/x11_keystrokes.h"

#define XK_MISCELLANY
#define XK_LATIN1
#include <X11/keysymdef.h>

#include <chrono>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kTimeToTake = 1000ms;

std::uint32_t KeyWithCtrl(std::wstring_view keys)
{
    if (keys == kCtrlInsert)
        return XK_Insert;
    return keys == kCtrlC ? XK_c : XK_VoidSymbol;
}

} // namespace

bool X11Keystrokes::SendKeys(std::wstring_view keys, NativeWindow window)
{
    if (!keys_.IsOpen() || !windows_.IsOpen() || window == 0)
        return false;
    if (windows_.TakesKeysAsInput(window) || !windows_.HasFocus(window) ||
        !keys_.TypeWithCtrl(KeyWithCtrl(keys)))
        return false;
    windows_.AwaitAnswer(window, kTimeToTake);
    return true;
}

} // namespace voxtrel::platform
