#pragma once

#include "platform/windows/windows_headers.h"

#include <unknwn.h>

#include <atomic>

namespace voxtrel::platform {

// COM's interfaces have no virtual destructor: objects are released, never deleted.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// An object of ours that counts its references and goes with the last; it begins with one.
template <class Interface> class ComObject : public Interface {
public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~ComObject() = default;

    ULONG References() const { return references_; }

private:
    std::atomic<ULONG> references_ = 1;
};

#pragma GCC diagnostic pop

} // namespace voxtrel::platform
