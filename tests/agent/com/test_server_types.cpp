#include "agent/com/test_server_types.h"

#include <cwchar>
#include <initializer_list>

namespace voxtrel::tests {
namespace {

const wchar_t* const kEvents[] = {L"ActivateInput", L"Bookmark",        L"Click",       L"DblClick",
                                  L"DragStart",     L"DragComplete",    L"Show",        L"Hide",
                                  L"RequestStart",  L"RequestComplete", L"BalloonShow", L"BalloonHide",
                                  L"IdleStart",     L"IdleComplete",    nullptr};

LPOLESTR Name(const wchar_t* name) { return const_cast<LPOLESTR>(name); }

ICreateTypeInfo* NewType(ICreateTypeLib2* library, const wchar_t* name, TYPEKIND kind, REFGUID id)
{
    ICreateTypeInfo* type = nullptr;
    library->CreateTypeInfo(Name(name), kind, &type);
    type->SetGuid(id);
    return type;
}

void AddEvents(ICreateTypeInfo* type)
{
    UINT index = 0;
    for (const wchar_t* const* event = kEvents; *event; ++event, ++index) {
        FUNCDESC function = {};
        function.memid = EventNumber(*event);
        function.funckind = FUNC_DISPATCH;
        function.invkind = INVOKE_FUNC;
        function.callconv = CC_STDCALL;
        function.elemdescFunc.tdesc.vt = VT_VOID;
        LPOLESTR names[] = {Name(*event)};
        type->AddFuncDesc(index, &function);
        type->SetFuncAndParamNames(index, names, 1);
    }
}

void AddPart(ICreateTypeInfo* classType, UINT index, ICreateTypeInfo* part, INT flags)
{
    ITypeInfo* info = nullptr;
    HREFTYPE reference = 0;
    part->QueryInterface(IID_ITypeInfo, reinterpret_cast<void**>(&info));
    classType->AddRefTypeInfo(info, &reference);
    classType->AddImplType(index, reference);
    classType->SetImplTypeFlags(index, flags);
    info->Release();
}

ITypeLib* MakeLibrary()
{
    ICreateTypeLib2* library = nullptr;
    CreateTypeLib2(SYS_WIN64, L"voxtrel-test-control.tlb", &library);
    library->SetName(Name(L"VoxtrelTestControl"));
    ICreateTypeInfo* const dispatch = NewType(library, L"TestControl", TKIND_DISPATCH, kTestControlInterface);
    ICreateTypeInfo* const events =
        NewType(library, L"TestControlEvents", TKIND_DISPATCH, kTestEventsInterface);
    ICreateTypeInfo* const control = NewType(library, L"Control", TKIND_COCLASS, kTestControlClass);
    AddEvents(events);
    AddPart(control, 0, dispatch, IMPLTYPEFLAG_FDEFAULT);
    AddPart(control, 1, events, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
    for (ICreateTypeInfo* type : {dispatch, events, control}) {
        type->LayOut();
        type->Release();
    }
    ITypeLib* made = nullptr;
    library->QueryInterface(IID_ITypeLib, reinterpret_cast<void**>(&made));
    library->Release();
    return made;
}

ITypeInfo* Describe(REFGUID id)
{
    ITypeLib* const library = MakeLibrary();
    ITypeInfo* info = nullptr;
    library->GetTypeInfoOfGuid(id, &info);
    library->Release();
    return info;
}

} // namespace

const wchar_t* const* EventNames() { return kEvents; }

DISPID EventNumber(const wchar_t* name)
{
    DISPID number = 100 + static_cast<DISPID>(GetCurrentProcessId() % 1000) * 17;
    for (const wchar_t* const* event = kEvents; *event && std::wcscmp(*event, name) != 0; ++event)
        number += 3;
    return number;
}

ITypeInfo* DescribeControlClass() { return Describe(kTestControlClass); }

ITypeInfo* DescribeControlInterface() { return Describe(kTestControlInterface); }

} // namespace voxtrel::tests
