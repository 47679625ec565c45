#pragma once

#include "platform/windows/windows_headers.h"

#include <oleauto.h>

#include <string>

// Values for calls and events; whoever gets one clears it.
namespace voxtrel::tests {

inline VARIANT Short(short number)
{
    VARIANT value = {};
    value.vt = VT_I2;
    value.iVal = number;
    return value;
}

inline VARIANT Number(long number)
{
    VARIANT value = {};
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

inline VARIANT Flag(bool flag)
{
    VARIANT value = {};
    value.vt = VT_BOOL;
    value.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return value;
}

inline VARIANT Text(const std::wstring& text)
{
    VARIANT value = {};
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return value;
}

inline VARIANT Object(IDispatch* object)
{
    VARIANT value = {};
    value.vt = VT_DISPATCH;
    value.pdispVal = object;
    object->AddRef();
    return value;
}

} // namespace voxtrel::tests
