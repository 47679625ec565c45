#include "target_window.h"

#include "platform/windows/windows_headers.h"

#include <atomic>
#include <cstring>
#include <mutex>
#include <semaphore>
#include <thread>

namespace voxtrel::platform {
namespace {

constexpr UINT kHang = WM_APP + 1;

} // namespace

struct TargetWindow::State {
    Habits habits;
    HWND window = nullptr;
    std::binary_semaphore ready{0};
    HANDLE awake = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    mutable std::mutex mutex;
    std::vector<std::string> keys;
    std::thread thread;

    ~State() { CloseHandle(awake); }

    void Run()
    {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"VoxtrelTestTarget";
        RegisterClassW(&windowClass);
        window = CreateWindowExW(0, windowClass.lpszClassName, L"target", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                 40, 40, 200, 100, nullptr, nullptr, windowClass.hInstance, this);
        ::SetForegroundWindow(window);
        ready.release();
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l)
    {
        if (message == WM_NCCREATE)
            SetWindowLongPtrW(
                window, GWLP_USERDATA,
                reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(l)->lpCreateParams));
        auto* state = reinterpret_cast<State*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            if (state)
                state->OnKey(w);
            return 0;
        case WM_COPY:
            if (state && state->habits.copiesOnMessage)
                state->Copy();
            return 0;
        case kHang:
            WaitForSingleObject(state->awake, INFINITE);
            return 0;
        case WM_CLOSE:
            DestroyWindow(window);
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, w, l);
        }
    }

    void OnKey(WPARAM key)
    {
        if (key != VK_INSERT && key != 'C')
            return;
        const bool ctrl = GetKeyState(VK_CONTROL) < 0;
        const bool shift = GetKeyState(VK_SHIFT) < 0;
        const bool alt = GetKeyState(VK_MENU) < 0;
        {
            const std::lock_guard lock(mutex);
            keys.push_back(std::string(ctrl ? "Ctrl+" : "") + (shift ? "Shift+" : "") + (alt ? "Alt+" : "") +
                           (key == VK_INSERT ? "Insert" : "C"));
        }
        if (habits.closesOnKey)
            DestroyWindow(window);
        if (habits.hangsOnKey)
            WaitForSingleObject(awake, INFINITE);
        if (ctrl && !shift && !alt && (key == VK_INSERT ? habits.copiesOnInsert : habits.copiesOnC))
            Copy();
    }

    void Copy()
    {
        const std::size_t size = (habits.text.size() + 1) * sizeof(wchar_t);
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(GlobalLock(memory), habits.text.c_str(), size);
        GlobalUnlock(memory);
        if (!OpenClipboard(window))
            return;
        EmptyClipboard();
        SetClipboardData(CF_UNICODETEXT, memory);
        CloseClipboard();
    }
};

TargetWindow::TargetWindow(Habits habits) : state_(std::make_unique<State>())
{
    state_->habits = std::move(habits);
    state_->thread = std::thread([this] { state_->Run(); });
    state_->ready.acquire();
}

TargetWindow::~TargetWindow()
{
    Wake();
    PostMessageW(state_->window, WM_CLOSE, 0, 0);
    state_->thread.join();
}

NativeWindow TargetWindow::Handle() const { return reinterpret_cast<NativeWindow>(state_->window); }

void TargetWindow::Hang() { PostMessageW(state_->window, kHang, 0, 0); }

void TargetWindow::Wake() { SetEvent(state_->awake); }

std::vector<std::string> TargetWindow::Keys() const
{
    const std::lock_guard lock(state_->mutex);
    return state_->keys;
}

} // namespace voxtrel::platform
