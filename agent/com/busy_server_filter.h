#pragma once

#include "platform/windows/com_object.h"

#include <objbase.h>
#include <objidl.h>

namespace voxtrel::agent::com {

// Asks again for a while when a server in another process says that it is busy: without it such a call fails
// at once.
class BusyServerFilter final : public platform::ComObject<IMessageFilter> {
public:
    // For the apartment of the calling thread, until Withdraw.
    static void Register();
    static void Withdraw();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override;
    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD passedMs, DWORD rejection) override;
    DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override;
};

} // namespace voxtrel::agent::com
