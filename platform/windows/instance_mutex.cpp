#include "platform/single_instance.h"

#include "platform/windows/windows_headers.h"

namespace voxtrel::platform {
namespace {

// A named object of the session; the system frees it when the program ends, however it ends.
class InstanceMutex final : public SingleInstance {
public:
    ~InstanceMutex() override
    {
        if (mutex_)
            CloseHandle(mutex_);
    }

    bool AnotherIsRunning() override
    {
        if (mutex_)
            return false;
        mutex_ = CreateMutexW(nullptr, FALSE, L"Local\\Voxtrel.Instance");
        if (GetLastError() != ERROR_ALREADY_EXISTS)
            return false;
        CloseHandle(mutex_);
        mutex_ = nullptr;
        return true;
    }

private:
    HANDLE mutex_ = nullptr;
};

} // namespace

std::unique_ptr<SingleInstance> MakeSingleInstance() { return std::make_unique<InstanceMutex>(); }

} // namespace voxtrel::platform
