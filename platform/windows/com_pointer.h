#pragma once

#include "platform/windows/windows_headers.h"

#include <oleauto.h>

#include <string>
#include <utility>

namespace voxtrel::platform {

// Owns one reference to a COM object.
template <class Interface> class ComPointer {
public:
    ComPointer() = default;
    // Takes over the reference of a pointer that came from a call.
    explicit ComPointer(Interface* object) : object_(object) {}
    ~ComPointer()
    {
        if (object_)
            object_->Release();
    }
    ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPointer& operator=(ComPointer&& other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;

    Interface* Get() const { return object_; }
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    // For a call that gives back a pointer.
    Interface** Receive()
    {
        ComPointer(std::move(*this));
        return &object_;
    }
    void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }

private:
    Interface* object_ = nullptr;
};

// Owns a text that came from a call.
class ComText {
public:
    ComText() = default;
    ~ComText() { SysFreeString(text_); }
    ComText(const ComText&) = delete;
    ComText& operator=(const ComText&) = delete;

    BSTR* Receive() { return &text_; }
    std::wstring Text() const { return text_ ? std::wstring(text_, SysStringLen(text_)) : std::wstring(); }

private:
    BSTR text_ = nullptr;
};

// Owns whatever a VARIANT holds.
class ComVariant {
public:
    ComVariant() { VariantInit(&value_); }
    ~ComVariant() { VariantClear(&value_); }
    ComVariant(const ComVariant&) = delete;
    ComVariant& operator=(const ComVariant&) = delete;

    VARIANT* Receive() { return &value_; }
    const VARIANT& Get() const { return value_; }

    std::wstring Text() const
    {
        return value_.vt == VT_BSTR && value_.bstrVal
                   ? std::wstring(value_.bstrVal, SysStringLen(value_.bstrVal))
                   : std::wstring();
    }
    long Number(long otherwise) const { return value_.vt == VT_I4 ? value_.lVal : otherwise; }
    bool IsTrue() const { return value_.vt == VT_BOOL && value_.boolVal != VARIANT_FALSE; }

private:
    VARIANT value_;
};

} // namespace voxtrel::platform
