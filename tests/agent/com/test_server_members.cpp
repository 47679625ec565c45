#include "agent/com/test_server_objects.h"

#include <algorithm>

namespace voxtrel::tests {
namespace {

DISPID FirstNumber() { return 5000 + static_cast<DISPID>(GetCurrentProcessId() % 777) * 11; }

bool SameName(const std::wstring& a, const std::wstring& b)
{
    return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_EQUAL;
}

// As in the log: texts in quotes, flags as words, anything unexpected by its kind.
std::wstring Written(const VARIANT& value)
{
    switch (value.vt) {
    case VT_BSTR:
        return L"\"" + std::wstring(value.bstrVal, SysStringLen(value.bstrVal)) + L"\"";
    case VT_I4:
        return std::to_wstring(value.lVal);
    case VT_BOOL:
        return value.boolVal ? L"True" : L"False";
    default:
        return L"<kind " + std::to_wstring(value.vt) + L">";
    }
}

std::wstring Written(const std::vector<VARIANT*>& arguments)
{
    std::wstring text;
    for (const VARIANT* argument : arguments)
        text += (text.empty() ? L"" : L" ") + Written(*argument);
    return text;
}

} // namespace

NamedMembers::NamedMembers(std::vector<std::wstring> members) : members_(std::move(members))
{
    InterlockedIncrement(&ServerScript::Get().objects);
}

NamedMembers::~NamedMembers() { InterlockedDecrement(&ServerScript::Get().objects); }

HRESULT NamedMembers::QueryInterface(REFIID id, void** object)
{
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch)
        return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

ULONG NamedMembers::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG NamedMembers::Release()
{
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0)
        delete this;
    return static_cast<ULONG>(left);
}

HRESULT NamedMembers::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}

HRESULT NamedMembers::GetTypeInfo(UINT, LCID, ITypeInfo**) { return DISP_E_BADINDEX; }

HRESULT NamedMembers::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids)
{
    const auto found = std::find_if(members_.begin(), members_.end(),
                                    [&](const std::wstring& member) { return SameName(member, names[0]); });
    if (count != 1 || found == members_.end())
        return DISP_E_UNKNOWNNAME;
    ids[0] = FirstNumber() + static_cast<DISPID>(found - members_.begin());
    return S_OK;
}

HRESULT NamedMembers::Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                             EXCEPINFO* exception, UINT*)
{
    const auto index = static_cast<std::size_t>(member - FirstNumber());
    if (index >= members_.size())
        return DISP_E_MEMBERNOTFOUND;
    const bool put = kind == DISPATCH_PROPERTYPUT;
    const bool putIsNamed =
        parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    if (put != putIsNamed)
        return DISP_E_PARAMNOTOPTIONAL;
    Asked asked{members_[index], kind, {}, result, exception};
    for (UINT i = parameters->cArgs; i > 0; --i)
        asked.arguments.push_back(&parameters->rgvarg[i - 1]);
    return Do(asked);
}

WithProperties::WithProperties(std::wstring name, std::map<std::wstring, VARIANT> properties,
                               const std::vector<std::wstring>& methods)
    : NamedMembers([&] {
          std::vector<std::wstring> members = methods;
          for (const auto& [member, value] : properties)
              members.push_back(member);
          return members;
      }()),
      name_(std::move(name)), properties_(std::move(properties))
{
}

WithProperties::~WithProperties()
{
    for (auto& [member, value] : properties_)
        VariantClear(&value);
}

HRESULT WithProperties::Carry(const Asked& asked) const
{
    const wchar_t* const sign = asked.kind == DISPATCH_PROPERTYPUT   ? L" ="
                                : asked.kind == DISPATCH_PROPERTYGET ? L"?"
                                                                     : L"";
    return ServerScript::Get().Carry(name_ + L"." + asked.member + sign, Written(asked.arguments),
                                     asked.exception);
}

HRESULT WithProperties::DoProperty(const Asked& asked)
{
    const HRESULT carried = Carry(asked);
    return FAILED(carried) ? carried : Access(asked);
}

HRESULT WithProperties::Access(const Asked& asked)
{
    const auto property = properties_.find(asked.member);
    if (property == properties_.end())
        return DISP_E_MEMBERNOTFOUND;
    if (asked.kind == DISPATCH_PROPERTYGET)
        return asked.result ? VariantCopy(asked.result, &property->second) : E_POINTER;
    if (asked.arguments.size() != 1)
        return DISP_E_BADPARAMCOUNT;
    return VariantChangeType(&property->second, asked.arguments[0], 0, property->second.vt);
}

} // namespace voxtrel::tests
