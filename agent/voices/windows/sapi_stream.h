#pragma once

#include "agent/voices/windows/sapi_headers.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <vector>

namespace voxtrel::agent::voices {

// IUnknown has no virtual destructor: objects are released, never deleted.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// What a SAPI voice speaks into: 16 bits, one channel. It writes on a thread of its own, the engine's worker
// takes.
class SapiStream final : public ISpStreamFormat {
public:
    static constexpr int kSampleRate = 22050;

    // What has come since the last time, after a wait when there is nothing.
    std::vector<std::int16_t> Take(std::chrono::milliseconds patience);
    // Nothing more is wanted: whoever writes is told to stop.
    void Close();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG size, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* state, DWORD) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFormat(GUID* format, WAVEFORMATEX** description) override;

private:
    ~SapiStream() = default;

    std::atomic<ULONG> references_ = 1;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<unsigned char> bytes_; // not taken yet; may end within a sample
    ULONGLONG size_ = 0;               // of all that was written, in bytes
    bool closed_ = false;
};

#pragma GCC diagnostic pop

} // namespace voxtrel::agent::voices
