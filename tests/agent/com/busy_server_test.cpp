// A server in another apartment that says that it is busy.

#include "agent/com/apartment.h"
#include "agent/com/late_bound.h"
#include "agent/com/variants.h"
#include "platform/windows/com_object.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

namespace voxtrel::tests {
namespace {

using agent::com::Apartment;
using agent::com::LateBound;
using platform::ComPointer;
using std::chrono::seconds;

class Answerer final : public platform::ComObject<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        *object = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
        if (*object)
            AddRef();
        return *object ? S_OK : E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override
    {
        *id = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override
    {
        *result = Number(42);
        return S_OK;
    }
};

// Refuses the first calls.
class BusyFilter final : public platform::ComObject<IMessageFilter> {
public:
    BusyFilter(std::atomic<int>& refusals, DWORD rejection) : refusals_(refusals), rejection_(rejection) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        *object = id == IID_IUnknown || id == IID_IMessageFilter ? this : nullptr;
        if (*object)
            AddRef();
        return *object ? S_OK : E_NOINTERFACE;
    }
    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override
    {
        return refusals_ > 0 && refusals_-- > 0 ? rejection_ : DWORD{SERVERCALL_ISHANDLED};
    }
    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD) override { return static_cast<DWORD>(-1); }
    DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override { return PENDINGMSG_WAITDEFPROCESS; }

private:
    std::atomic<int>& refusals_;
    DWORD rejection_;
};

// An apartment whose object can be called from others.
class ServerThread {
public:
    explicit ServerThread(DWORD rejection)
    {
        std::promise<IStream*> marshalled;
        thread_ = std::thread([this, rejection, &marshalled] { Main(rejection, marshalled); });
        stream_ = marshalled.get_future().get();
    }
    ~ServerThread()
    {
        PostThreadMessageW(id_, WM_QUIT, 0, 0);
        thread_.join();
    }
    ServerThread(const ServerThread&) = delete;
    ServerThread& operator=(const ServerThread&) = delete;

    // To be unmarshalled once.
    IStream* Stream() const { return stream_; }
    std::atomic<int> refusals = 0;

private:
    void Main(DWORD rejection, std::promise<IStream*>& marshalled)
    {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        id_ = GetCurrentThreadId();
        const ComPointer<IMessageFilter> filter(new BusyFilter(refusals, rejection));
        CoRegisterMessageFilter(filter.Get(), nullptr);
        const ComPointer<IDispatch> object(new Answerer);
        IStream* stream = nullptr;
        CoMarshalInterThreadInterfaceInStream(IID_IDispatch, object.Get(), &stream);
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); // makes the queue
        marshalled.set_value(stream);
        while (GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
        CoRegisterMessageFilter(nullptr, nullptr);
        CoUninitialize();
    }

    std::thread thread_;
    DWORD id_ = 0;
    IStream* stream_ = nullptr;
};

std::optional<long> AskThroughApartment(ServerThread& server, int refusals)
{
    Apartment apartment;
    const auto ask = [&server, refusals]() -> std::optional<long> {
        ComPointer<IDispatch> proxy;
        if (FAILED(CoGetInterfaceAndReleaseStream(server.Stream(), IID_IDispatch, proxy.ReceiveVoid())))
            return std::nullopt;
        const LateBound object(std::move(proxy));
        server.refusals = refusals;
        const agent::com::Answer answer = object.Read(L"Anything");
        return answer.result.Ok() ? answer.value.Number() : std::nullopt;
    };
    return apartment.Ask<std::optional<long>>(ask, seconds(10), Apartment::IfLate::StillDo)
        .value_or(std::nullopt);
}

TEST(BusyServer, IsAskedAgainUntilItAnswers)
{
    ServerThread server(SERVERCALL_RETRYLATER);
    EXPECT_EQ(AskThroughApartment(server, 3), 42);
    EXPECT_EQ(server.refusals, 0);
}

TEST(BusyServer, ThatRefusesForGoodIsNotAskedAgain)
{
    ServerThread server(SERVERCALL_REJECTED);
    // It would answer a second time.
    EXPECT_EQ(AskThroughApartment(server, 1), std::nullopt);
}

} // namespace
} // namespace voxtrel::tests
