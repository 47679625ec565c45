#pragma once

#include "platform/windows/windows_headers.h"

#include <unknwn.h>

// The interfaces of UI Automation's client, as far as they are called here; the compiler's headers have none
// of them. The places of the functions are part of the interfaces: what is not called is left as a place.
namespace voxtrel::platform {

// IUnknown has no virtual destructor: objects are released, never deleted.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

#define VOXTREL_UNUSED_PLACE(number)                                                                         \
    virtual HRESULT STDMETHODCALLTYPE Unused##number() { return E_NOTIMPL; }
#define VOXTREL_TEN_UNUSED_PLACES(tens)                                                                      \
    VOXTREL_UNUSED_PLACE(tens##0)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##1)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##2)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##3)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##4)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##5)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##6)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##7)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##8)                                                                            \
    VOXTREL_UNUSED_PLACE(tens##9)

// IUIAutomationElement
struct UiaElement : IUnknown {
    VOXTREL_UNUSED_PLACE(0)
    VOXTREL_UNUSED_PLACE(1)
    VOXTREL_UNUSED_PLACE(2)
    VOXTREL_UNUSED_PLACE(3)
    VOXTREL_UNUSED_PLACE(4)
    VOXTREL_UNUSED_PLACE(5)
    VOXTREL_UNUSED_PLACE(6)
    virtual HRESULT STDMETHODCALLTYPE GetCurrentPropertyValue(int property, VARIANT* value) = 0;
};

// IUIAutomationElementArray
struct UiaElements : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE get_Length(int* length) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetElement(int index, UiaElement** element) = 0;
};

// IUIAutomationTreeWalker
struct UiaTreeWalker : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetParentElement(UiaElement* element, UiaElement** parent) = 0;
};

// IUIAutomation
struct UiaClient : IUnknown {
    VOXTREL_UNUSED_PLACE(0)
    VOXTREL_UNUSED_PLACE(1)
    VOXTREL_UNUSED_PLACE(2)
    VOXTREL_UNUSED_PLACE(3)
    virtual HRESULT STDMETHODCALLTYPE ElementFromPoint(POINT point, UiaElement** element) = 0;
    VOXTREL_UNUSED_PLACE(5)
    VOXTREL_UNUSED_PLACE(6)
    VOXTREL_UNUSED_PLACE(7)
    VOXTREL_UNUSED_PLACE(8)
    VOXTREL_UNUSED_PLACE(9)
    VOXTREL_UNUSED_PLACE(10);
    virtual HRESULT STDMETHODCALLTYPE get_ControlViewWalker(UiaTreeWalker** walker) = 0;
};

// IUIAutomation2, since Windows 8
struct UiaClientWithTimeouts : UiaClient {
    VOXTREL_UNUSED_PLACE(12)
    VOXTREL_UNUSED_PLACE(13)
    VOXTREL_UNUSED_PLACE(14)
    VOXTREL_UNUSED_PLACE(15)
    VOXTREL_UNUSED_PLACE(16)
    VOXTREL_UNUSED_PLACE(17)
    VOXTREL_UNUSED_PLACE(18)
    VOXTREL_UNUSED_PLACE(19)
    VOXTREL_TEN_UNUSED_PLACES(2)
    VOXTREL_TEN_UNUSED_PLACES(3)
    VOXTREL_TEN_UNUSED_PLACES(4)
    VOXTREL_UNUSED_PLACE(50)
    VOXTREL_UNUSED_PLACE(51)
    VOXTREL_UNUSED_PLACE(52)
    VOXTREL_UNUSED_PLACE(53)
    VOXTREL_UNUSED_PLACE(54)
    VOXTREL_UNUSED_PLACE(55)
    VOXTREL_UNUSED_PLACE(56)
    VOXTREL_UNUSED_PLACE(57)
    virtual HRESULT STDMETHODCALLTYPE put_ConnectionTimeout(DWORD milliseconds) = 0;
    VOXTREL_UNUSED_PLACE(59)
    virtual HRESULT STDMETHODCALLTYPE put_TransactionTimeout(DWORD milliseconds) = 0;
};

#undef VOXTREL_TEN_UNUSED_PLACES
#undef VOXTREL_UNUSED_PLACE
#pragma GCC diagnostic pop

inline constexpr GUID kUiaElementsInterface = {
    0x14314595, 0xb4bc, 0x4055, {0x95, 0xf2, 0x58, 0xf2, 0xe4, 0x2c, 0x98, 0x55}};
inline constexpr GUID kUiaClientClass = {
    0xff48dba4, 0x60ef, 0x4201, {0xaa, 0x87, 0x54, 0x10, 0x3e, 0xef, 0x59, 0x4e}};
inline constexpr GUID kUiaClientInterface = {
    0x30cbe57d, 0xd9d0, 0x452a, {0xab, 0x13, 0x7a, 0xc5, 0xac, 0x48, 0x25, 0xee}};
inline constexpr GUID kUiaClientWithTimeoutsClass = {
    0xe22ad333, 0xb25f, 0x460c, {0x83, 0xd0, 0x05, 0x81, 0x10, 0x73, 0x95, 0xc9}};
inline constexpr GUID kUiaClientWithTimeoutsInterface = {
    0x34723aff, 0x0c9d, 0x49d0, {0x98, 0x96, 0x7a, 0xb5, 0x2d, 0xf8, 0xcd, 0x8a}};

} // namespace voxtrel::platform
