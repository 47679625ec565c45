#include "agent/sapi/test_voice.h"

#include <algorithm>
#include <atomic>
#include <cwchar>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace voxtrel::tests {
namespace {

using agent::voices::ComPointer;
using agent::voices::SapiText;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

LPARAM CopyOfText(const std::wstring& text)
{
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    auto* const copy = static_cast<wchar_t*>(CoTaskMemAlloc(bytes));
    std::copy_n(text.c_str(), text.size() + 1, copy);
    return reinterpret_cast<LPARAM>(copy);
}

// Speaks on a thread of its own, like the real one.
class TestVoice final : public ISpVoice {
public:
    explicit TestVoice(VoiceScript& script) : script_(script)
    {
        ++script_.made;
        ++script_.alive;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        const bool known = id == IID_IUnknown || id == __uuidof(ISpVoice) || id == __uuidof(ISpEventSource) ||
                           id == __uuidof(ISpNotifySource);
        *object = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE SetOutput(IUnknown* output, WINBOOL) override
    {
        if (!output)
            return E_POINTER;
        if (FAILED(output->QueryInterface(__uuidof(ISpStreamFormat), output_.ReceiveVoid())))
            return E_INVALIDARG;
        GUID format = {};
        WAVEFORMATEX* wave = nullptr;
        if (FAILED(output_->GetFormat(&format, &wave)))
            return E_FAIL;
        Note(L"SetOutput " + std::to_wstring(wave->nSamplesPerSec) + L" " +
             std::to_wstring(wave->wBitsPerSample) + L" " + std::to_wstring(wave->nChannels));
        CoTaskMemFree(wave);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetVoice(ISpObjectToken* token) override
    {
        SapiText id;
        if (!token || FAILED(token->GetId(id.Receive())))
            return E_INVALIDARG;
        Note(L"SetVoice " + id.Text());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetRate(LONG rate) override
    {
        Note(L"SetRate " + std::to_wstring(rate));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetVolume(USHORT volume) override
    {
        Note(L"SetVolume " + std::to_wstring(volume));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetInterest(ULONGLONG interest, ULONGLONG queued) override
    {
        // The check bits must be there, or the real one refuses.
        const bool checked = (interest & SPFEI_FLAGCHECK) == SPFEI_FLAGCHECK && (queued & ~interest) == 0;
        interest_ = queued;
        return checked ? S_OK : E_INVALIDARG;
    }
    HRESULT STDMETHODCALLTYPE Speak(LPCWSTR text, DWORD flags, ULONG* number) override
    {
        if (!text && (flags & SPF_PURGEBEFORESPEAK))
            return Purge();
        if (FAILED(script_.speakResult))
            return script_.speakResult;
        if (!text || !output_ || flags != (SPF_ASYNC | SPF_IS_XML))
            return E_INVALIDARG;
        Note(L"Speak " + std::wstring(text));
        Join();
        *number = ++stream_;
        done_ = purged_ = false;
        speaker_ = std::thread([this, said = std::wstring(text)] { Say(said); });
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetEvents(ULONG count, SPEVENT* events, ULONG* fetched) override
    {
        const std::lock_guard lock(mutex_);
        ULONG taken = 0;
        for (; taken < count && !events_.empty(); ++taken) {
            events[taken] = events_.front();
            events_.pop_front();
        }
        if (fetched)
            *fetched = taken;
        return taken == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE WaitUntilDone(ULONG limit) override
    {
        const ULONGLONG begin = GetTickCount64();
        while (!done_ && GetTickCount64() - begin < limit)
            SwitchToThread();
        return done_ ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE GetStatus(SPVOICESTATUS* status, LPWSTR*) override
    {
        *status = {};
        status->hrLastResult = script_.result;
        return S_OK;
    }

    // Nothing else is asked of a voice.
    HRESULT STDMETHODCALLTYPE SetNotifySink(ISpNotifySink*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetNotifyWindowMessage(HWND, UINT, WPARAM, LPARAM) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetNotifyCallbackFunction(SPNOTIFYCALLBACK*, WPARAM, LPARAM) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetNotifyCallbackInterface(ISpNotifyCallback*, WPARAM, LPARAM) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetNotifyWin32Event() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE WaitForNotifyEvent(DWORD) override { return E_NOTIMPL; }
    HANDLE STDMETHODCALLTYPE GetNotifyEventHandle() override { return nullptr; }
    HRESULT STDMETHODCALLTYPE GetInfo(SPEVENTSOURCEINFO*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOutputObjectToken(ISpObjectToken**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOutputStream(ISpStreamFormat**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Pause() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Resume() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetVoice(ISpObjectToken**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SpeakStream(IStream*, DWORD, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Skip(LPCWSTR, LONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetPriority(SPVPRIORITY) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPriority(SPVPRIORITY*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAlertBoundary(SPEVENTENUM) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetAlertBoundary(SPEVENTENUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetRate(LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetVolume(USHORT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetSyncSpeakTimeout(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSyncSpeakTimeout(ULONG*) override { return E_NOTIMPL; }
    HANDLE STDMETHODCALLTYPE SpeakCompleteEvent() override { return nullptr; }
    HRESULT STDMETHODCALLTYPE IsUISupported(LPCWSTR, void*, ULONG, WINBOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DisplayUI(HWND, LPCWSTR, LPCWSTR, void*, ULONG) override { return E_NOTIMPL; }

private:
    ~TestVoice()
    {
        purged_ = true;
        Join();
        for (const SPEVENT& event : events_) {
            if (event.elParamType == SPET_LPARAM_IS_STRING)
                CoTaskMemFree(reinterpret_cast<void*>(event.lParam));
        }
        --script_.alive;
    }

    void Note(std::wstring call)
    {
        const std::lock_guard lock(mutex_);
        script_.calls.push_back(std::move(call));
    }

    void Join()
    {
        if (speaker_.joinable())
            speaker_.join();
    }

    HRESULT Purge()
    {
        Note(L"Purge");
        purged_ = !script_.ignoresPurge;
        return S_OK;
    }

    void Say(const std::wstring& text)
    {
        if (script_.eventsOf) {
            for (const VoiceScript::Event& event : script_.eventsOf(text))
                Tell(event);
        }
        // 16 bits that count up, in whatever pieces they come.
        std::vector<unsigned char> bytes;
        for (unsigned sample = 0; sample < 65536; ++sample) {
            bytes.push_back(static_cast<unsigned char>(sample & 0xFF));
            bytes.push_back(static_cast<unsigned char>(sample >> 8));
        }
        std::size_t at = 0;
        for (const std::size_t piece : script_.pieces) {
            Write(bytes.data() + at, piece);
            at += piece;
        }
        while (script_.goesOnForever && !purged_)
            Write(bytes.data(), 512);
        done_ = true;
    }

    void Write(const unsigned char* bytes, std::size_t size)
    {
        ULONG written = 0;
        if (FAILED(output_->Write(bytes, static_cast<ULONG>(size), &written)))
            script_.writeRefused = true;
    }

    void Tell(const VoiceScript::Event& event)
    {
        if ((interest_ & (1ull << event.kind)) == 0)
            return;
        SPEVENT told = {};
        told.eEventId = event.kind;
        told.ulStreamNum = stream_;
        told.ullAudioStreamOffset = event.byte;
        if (event.kind == SPEI_TTS_BOOKMARK) {
            told.elParamType = SPET_LPARAM_IS_STRING;
            told.lParam = CopyOfText(event.bookmark);
            told.wParam = static_cast<WPARAM>(std::wcstol(event.bookmark.c_str(), nullptr, 10));
        } else if (event.kind == SPEI_WORD_BOUNDARY) {
            told.lParam = static_cast<LPARAM>(event.position);
        } else {
            told.lParam = static_cast<LPARAM>(event.viseme);
        }
        const std::lock_guard lock(mutex_);
        events_.push_back(told);
    }

    VoiceScript& script_;
    std::atomic<ULONG> references_ = 1;
    std::mutex mutex_;
    std::deque<SPEVENT> events_;
    ULONGLONG interest_ = 0;
    ComPointer<ISpStreamFormat> output_;
    std::thread speaker_;
    std::atomic<ULONG> stream_ = 0;
    std::atomic<bool> done_ = true;
    std::atomic<bool> purged_ = false;
};

class VoiceFactory final : public IClassFactory {
public:
    explicit VoiceFactory(VoiceScript& script) : script_(script) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        *object = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
        if (*object)
            AddRef();
        return *object ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override
    {
        const ComPointer<TestVoice> voice(new TestVoice(script_));
        return voice->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL) override { return S_OK; }

private:
    ~VoiceFactory() = default;

    VoiceScript& script_;
    std::atomic<ULONG> references_ = 1;
};

#pragma GCC diagnostic pop

} // namespace

SapiStandIn::SapiStandIn(VoiceScript& script)
{
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const ComPointer<VoiceFactory> factory(new VoiceFactory(script));
    CoRegisterClassObject(__uuidof(SpVoice), factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                          &cookie_);
}

SapiStandIn::~SapiStandIn()
{
    CoRevokeClassObject(cookie_);
    CoUninitialize();
}

} // namespace voxtrel::tests
