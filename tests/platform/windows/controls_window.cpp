#include "controls_window.h"

#include <commctrl.h>

#include <semaphore>
#include <thread>

namespace voxtrel::tests {
namespace {

constexpr UINT kDo = WM_APP + 1;
constexpr wchar_t kClass[] = L"VoxtrelTestControls";

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kDo) {
        (*reinterpret_cast<const std::function<void()>*>(lParam))();
        return 0;
    }
    // The tool bar asks for the tips of its buttons.
    if (message == WM_NOTIFY &&
        reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(TTN_GETDISPINFOW)) {
        reinterpret_cast<NMTTDISPINFOW*>(lParam)->lpszText = const_cast<LPWSTR>(L"Open a drawing");
        return 0;
    }
    if (message == WM_DESTROY)
        PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

struct ControlsWindow::State {
    HWND window = nullptr;
    HANDLE awake = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::binary_semaphore ready{0};
    std::binary_semaphore frozen{0};
    std::function<void()> freeze;
    std::thread thread;

    ~State() { CloseHandle(awake); }

    void Run()
    {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        windowClass.lpszClassName = kClass;
        RegisterClassW(&windowClass);
        window = CreateWindowExW(WS_EX_TOPMOST, kClass, L"Controls", WS_POPUP | WS_VISIBLE, 100, 100, 400,
                                 300, nullptr, nullptr, windowClass.hInstance, nullptr);
        ready.release();
        for (MSG message; GetMessageW(&message, nullptr, 0, 0) > 0;) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
};

ControlsWindow::ControlsWindow() : state_(std::make_unique<State>())
{
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_USEREX_CLASSES | ICC_COOL_CLASSES};
    InitCommonControlsEx(&controls);
    state_->thread = std::thread([state = state_.get()] { state->Run(); });
    state_->ready.acquire();
}

ControlsWindow::~ControlsWindow()
{
    Do([this] { DestroyWindow(state_->window); });
    state_->thread.join();
}

HWND ControlsWindow::Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, RECT place)
{
    HWND control = nullptr;
    Do([&] {
        control = CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                                  place.right - place.left, place.bottom - place.top, state_->window, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    });
    return control;
}

void ControlsWindow::Do(const std::function<void()>& work)
{
    SendMessageW(state_->window, kDo, 0, reinterpret_cast<LPARAM>(&work));
}

void ControlsWindow::Freeze()
{
    state_->freeze = [state = state_.get()] {
        state->frozen.release();
        WaitForSingleObject(state->awake, INFINITE);
    };
    PostMessageW(state_->window, kDo, 0, reinterpret_cast<LPARAM>(&state_->freeze));
    state_->frozen.acquire();
}

void ControlsWindow::Wake() { SetEvent(state_->awake); }

platform::ScreenPoint ControlsWindow::On(HWND control, int x, int y)
{
    POINT point{x, y};
    ClientToScreen(control, &point);
    return {static_cast<int>(point.x), static_cast<int>(point.y)};
}

platform::ScreenPoint ControlsWindow::MiddleOf(HWND control)
{
    RECT area{};
    GetClientRect(control, &area);
    return On(control, static_cast<int>(area.right / 2), static_cast<int>(area.bottom / 2));
}

} // namespace voxtrel::tests
