#include "agent/com/busy_server_filter.h"

#include "platform/windows/com_pointer.h"

namespace voxtrel::agent::com {
namespace {

constexpr DWORD kLongestMs = 4000;
constexpr DWORD kAskAgainAfterMs = 100; // the shortest wait that there is
constexpr DWORD kGiveUp = static_cast<DWORD>(-1);

} // namespace

void BusyServerFilter::Register()
{
    const platform::ComPointer<IMessageFilter> filter(new BusyServerFilter);
    CoRegisterMessageFilter(filter.Get(), nullptr);
}

void BusyServerFilter::Withdraw() { CoRegisterMessageFilter(nullptr, nullptr); }

HRESULT BusyServerFilter::QueryInterface(REFIID id, void** object)
{
    if (!object)
        return E_POINTER;
    *object = id == IID_IUnknown || id == IID_IMessageFilter ? this : nullptr;
    if (!*object)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

// Events are taken at any time.
DWORD BusyServerFilter::HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO)
{
    return SERVERCALL_ISHANDLED;
}

DWORD BusyServerFilter::RetryRejectedCall(HTASK, DWORD passedMs, DWORD rejection)
{
    return rejection == SERVERCALL_RETRYLATER && passedMs < kLongestMs ? kAskAgainAfterMs : kGiveUp;
}

DWORD BusyServerFilter::MessagePending(HTASK, DWORD, DWORD) { return PENDINGMSG_WAITDEFPROCESS; }

} // namespace voxtrel::agent::com
