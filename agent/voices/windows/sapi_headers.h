#pragma once

#include "platform/windows/com_pointer.h"

#include <objbase.h>

// The compiler's header of SAPI is not as strict as ours.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
#include <sapi.h>
#pragma GCC diagnostic pop

#include <string>

namespace voxtrel::agent::voices {

using platform::ComPointer;

// COM on a worker thread, from its making to its end.
class ComThread {
public:
    ComThread() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
    ~ComThread()
    {
        if (entered_)
            CoUninitialize();
    }
    ComThread(const ComThread&) = delete;
    ComThread& operator=(const ComThread&) = delete;

private:
    bool entered_;
};

// A text that SAPI has allocated.
class SapiText {
public:
    SapiText() = default;
    ~SapiText() { CoTaskMemFree(text_); }
    SapiText(const SapiText&) = delete;
    SapiText& operator=(const SapiText&) = delete;

    LPWSTR* Receive() { return &text_; }
    std::wstring Text() const { return text_ ? std::wstring(text_) : std::wstring(); }

private:
    LPWSTR text_ = nullptr;
};

} // namespace voxtrel::agent::voices
