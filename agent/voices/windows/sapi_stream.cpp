#include "agent/voices/windows/sapi_stream.h"

#include <cstring>

namespace voxtrel::agent::voices {

namespace {

// The format is that of a WAVEFORMATEX.
constexpr GUID kWaveFormat = {0xC31ADBAE, 0x527F, 0x4FF5, {0xA2, 0x30, 0xF6, 0x2B, 0xB6, 0x1F, 0xF7, 0x0C}};

} // namespace

std::vector<std::int16_t> SapiStream::Take(std::chrono::milliseconds patience)
{
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience, [this] { return bytes_.size() >= sizeof(std::int16_t); });
    std::vector<std::int16_t> samples(bytes_.size() / sizeof(std::int16_t));
    const std::size_t whole = samples.size() * sizeof(std::int16_t);
    if (whole > 0)
        std::memcpy(samples.data(), bytes_.data(), whole);
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(whole));
    return samples;
}

void SapiStream::Close()
{
    const std::lock_guard lock(mutex_);
    closed_ = true;
    bytes_.clear();
}

HRESULT SapiStream::QueryInterface(REFIID id, void** object)
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_ISequentialStream && id != IID_IStream &&
        id != __uuidof(ISpStreamFormat))
        return E_NOINTERFACE;
    *object = static_cast<ISpStreamFormat*>(this);
    AddRef();
    return S_OK;
}

ULONG SapiStream::AddRef() { return ++references_; }

ULONG SapiStream::Release()
{
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT SapiStream::Write(const void* bytes, ULONG size, ULONG* written)
{
    const std::lock_guard lock(mutex_);
    if (written)
        *written = closed_ ? 0 : size;
    if (closed_)
        return STG_E_REVERTED;
    const auto* first = static_cast<const unsigned char*>(bytes);
    bytes_.insert(bytes_.end(), first, first + size);
    size_ += size;
    changed_.notify_all();
    return S_OK;
}

// SAPI asks for the place only.
HRESULT SapiStream::Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER* position)
{
    const std::lock_guard lock(mutex_);
    if (position)
        position->QuadPart = size_;
    return S_OK;
}

HRESULT SapiStream::Stat(STATSTG* state, DWORD)
{
    if (!state)
        return E_POINTER;
    const std::lock_guard lock(mutex_);
    *state = {};
    state->type = STGTY_STREAM;
    state->cbSize.QuadPart = size_;
    return S_OK;
}

HRESULT SapiStream::GetFormat(GUID* format, WAVEFORMATEX** description)
{
    if (!format || !description)
        return E_POINTER;
    *format = kWaveFormat;
    *description = static_cast<WAVEFORMATEX*>(CoTaskMemAlloc(sizeof(WAVEFORMATEX)));
    if (!*description)
        return E_OUTOFMEMORY;
    WAVEFORMATEX wave = {};
    wave.wFormatTag = WAVE_FORMAT_PCM;
    wave.nChannels = 1;
    wave.nSamplesPerSec = kSampleRate;
    wave.wBitsPerSample = 16;
    wave.nBlockAlign = sizeof(std::int16_t);
    wave.nAvgBytesPerSec = kSampleRate * sizeof(std::int16_t);
    **description = wave;
    return S_OK;
}

} // namespace voxtrel::agent::voices
