#include "agent/com/apartment.h"

#include "platform/windows/windows_headers.h"

#include <objbase.h>

#include <algorithm>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace voxtrel::agent::com {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLastWork{1000};
// Of a control that never answers again, so that what it is asked does not fill the memory.
constexpr std::size_t kMostWaiting = 100;

// An event of the system that becomes set and stays so, or is taken back by whoever waited.
class Signal {
public:
    enum class Kind { Stays, TakenByWaiter };
    explicit Signal(Kind kind) : handle_(CreateEventW(nullptr, kind == Kind::Stays, FALSE, nullptr)) {}
    ~Signal() { CloseHandle(handle_); }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    void Set() const { SetEvent(handle_); }
    const HANDLE* Handle() const { return &handle_; }

private:
    HANDLE handle_;
};

// Messages that other threads send are answered meanwhile: the control may send one to a window of the
// waiting thread. Everything that is posted, and with it the program's own handlers, waits.
bool WaitAnsweringSentMessages(const Signal& signal, milliseconds deadline)
{
    const ULONGLONG begin = GetTickCount64();
    const auto whole = static_cast<ULONGLONG>(deadline.count());
    for (;;) {
        const ULONGLONG passed = GetTickCount64() - begin;
        const DWORD left = passed < whole ? static_cast<DWORD>(whole - passed) : 0;
        if (MsgWaitForMultipleObjects(1, signal.Handle(), FALSE, left, QS_SENDMESSAGE) != WAIT_OBJECT_0 + 1)
            return WaitForSingleObject(*signal.Handle(), 0) == WAIT_OBJECT_0;
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
}

void HandlePostedMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace

struct Apartment::Task {
    std::function<void()> work;
    Signal done{Signal::Kind::Stays};
    bool overdue = false; // guarded by Shared::mutex
};

struct Apartment::Shared {
    std::mutex mutex;
    std::deque<std::shared_ptr<Task>> waiting;
    std::size_t overdue = 0; // that have missed their deadline and are not done yet
    bool ending = false;
    Signal wake{Signal::Kind::TakenByWaiter};
    Signal ended{Signal::Kind::Stays};

    std::shared_ptr<Task> Take()
    {
        const std::lock_guard lock(mutex);
        if (waiting.empty())
            return nullptr;
        std::shared_ptr<Task> task = std::move(waiting.front());
        waiting.pop_front();
        return task;
    }

    void Finish(Task& task)
    {
        // Its captures go here, on the thread that their objects belong to.
        task.work = nullptr;
        const std::lock_guard lock(mutex);
        overdue -= task.overdue ? 1 : 0;
        task.done.Set();
    }

    bool Ending()
    {
        const std::lock_guard lock(mutex);
        return ending && waiting.empty();
    }
};

Apartment::Apartment() : shared_(std::make_shared<Shared>())
{
    // The thread may outlive this object: all that it uses is shared with it.
    std::thread([shared = shared_] { Main(shared); }).detach();
}

Apartment::~Apartment()
{
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->ending = true;
    }
    shared_->wake.Set();
    WaitAnsweringSentMessages(shared_->ended, kLastWork);
}

void Apartment::Main(const std::shared_ptr<Shared>& shared)
{
    const bool initialised = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    while (!shared->Ending()) {
        MsgWaitForMultipleObjectsEx(1, shared->wake.Handle(), INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        HandlePostedMessages();
        while (const std::shared_ptr<Task> task = shared->Take()) {
            task->work();
            shared->Finish(*task);
            HandlePostedMessages();
        }
    }
    if (initialised)
        CoUninitialize();
    shared->ended.Set();
}

void Apartment::Post(std::function<void()> work)
{
    const auto task = std::make_shared<Task>();
    task->work = std::move(work);
    const std::lock_guard lock(shared_->mutex);
    shared_->waiting.push_back(task);
    shared_->wake.Set();
}

bool Apartment::Run(std::function<void()> work, milliseconds deadline, IfLate ifLate)
{
    const auto task = std::make_shared<Task>();
    task->work = std::move(work);
    {
        const std::lock_guard lock(shared_->mutex);
        const bool late = shared_->overdue > 0;
        if (late && (ifLate == IfLate::LeaveOut || shared_->waiting.size() >= kMostWaiting))
            return false;
        shared_->waiting.push_back(task);
        shared_->wake.Set();
        if (late)
            return false;
    }
    if (WaitAnsweringSentMessages(task->done, deadline))
        return true;
    const std::lock_guard lock(shared_->mutex);
    if (WaitForSingleObject(*task->done.Handle(), 0) == WAIT_OBJECT_0)
        return true;
    const auto place = std::find(shared_->waiting.begin(), shared_->waiting.end(), task);
    if (place != shared_->waiting.end() && ifLate == IfLate::LeaveOut) {
        shared_->waiting.erase(place);
        return false;
    }
    task->overdue = true;
    ++shared_->overdue;
    return false;
}

} // namespace voxtrel::agent::com
