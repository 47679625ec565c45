#pragma once

#include "platform/windows/windows_headers.h"

#include <unknwn.h>

// The interfaces of UI Automation's client, as far as they are called here; the compiler's headers have none
// of them. The places of the functions are part of the interfaces: what is not called is left as a place.
namespace voxtrel::platform {

// IUnknown has no virtual destructor: objects are released, never deleted.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

#define VOXTREL_UNUSED_PLACE(number) virtual HRESULT STDMETHODCALLTYPE Unused##number() = 0

// IUIAutomationElement
struct UiaElement : IUnknown {
    VOXTREL_UNUSED_PLACE(0);
    VOXTREL_UNUSED_PLACE(1);
    VOXTREL_UNUSED_PLACE(2);
    VOXTREL_UNUSED_PLACE(3);
    VOXTREL_UNUSED_PLACE(4);
    VOXTREL_UNUSED_PLACE(5);
    VOXTREL_UNUSED_PLACE(6);
    virtual HRESULT STDMETHODCALLTYPE GetCurrentPropertyValue(int property, VARIANT* value) = 0;
};

// IUIAutomationTreeWalker
struct UiaTreeWalker : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetParentElement(UiaElement* element, UiaElement** parent) = 0;
};

// IUIAutomation
struct UiaClient : IUnknown {
    VOXTREL_UNUSED_PLACE(0);
    VOXTREL_UNUSED_PLACE(1);
    VOXTREL_UNUSED_PLACE(2);
    VOXTREL_UNUSED_PLACE(3);
    virtual HRESULT STDMETHODCALLTYPE ElementFromPoint(POINT point, UiaElement** element) = 0;
    VOXTREL_UNUSED_PLACE(5);
    VOXTREL_UNUSED_PLACE(6);
    VOXTREL_UNUSED_PLACE(7);
    VOXTREL_UNUSED_PLACE(8);
    VOXTREL_UNUSED_PLACE(9);
    VOXTREL_UNUSED_PLACE(10);
    virtual HRESULT STDMETHODCALLTYPE get_ControlViewWalker(UiaTreeWalker** walker) = 0;
};

#undef VOXTREL_UNUSED_PLACE
#pragma GCC diagnostic pop

inline constexpr GUID kUiaClientClass = {
    0xff48dba4, 0x60ef, 0x4201, {0xaa, 0x87, 0x54, 0x10, 0x3e, 0xef, 0x59, 0x4e}};
inline constexpr GUID kUiaClientInterface = {
    0x30cbe57d, 0xd9d0, 0x452a, {0xab, 0x13, 0x7a, 0xc5, 0xac, 0x48, 0x25, 0xee}};

} // namespace voxtrel::platform
