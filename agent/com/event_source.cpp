#include "agent/com/event_source.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace voxtrel::agent::com {
namespace {

using platform::ComText;

// Gives the structures that type information hands out back to it.
template <class Attributes, void (STDMETHODCALLTYPE ITypeInfo::*give)(Attributes*)> class Lent {
public:
    explicit Lent(ITypeInfo& info) : info_(info) {}
    ~Lent()
    {
        if (attributes_)
            (info_.*give)(attributes_);
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

    Attributes** Receive() { return &attributes_; }
    const Attributes* operator->() const { return attributes_; }

private:
    ITypeInfo& info_;
    Attributes* attributes_ = nullptr;
};
using TypeAttributes = Lent<TYPEATTR, &ITypeInfo::ReleaseTypeAttr>;
using FunctionDescription = Lent<FUNCDESC, &ITypeInfo::ReleaseFuncDesc>;

std::wstring Lower(std::wstring name)
{
    std::transform(name.begin(), name.end(), name.begin(), [](wchar_t c) {
        return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
    });
    return name;
}

// The description of the object's class: from the object itself, else from the library that describes the
// object.
ComPointer<ITypeInfo> ClassOf(IDispatch& object, const CLSID& classId)
{
    ComPointer<ITypeInfo> info;
    if (const auto provider = As<IProvideClassInfo>(&object);
        provider && SUCCEEDED(provider->GetClassInfo(info.Receive())) && info)
        return info;
    ComPointer<ITypeInfo> dispatch;
    ComPointer<ITypeLib> library;
    UINT index = 0;
    if (FAILED(object.GetTypeInfo(0, LOCALE_USER_DEFAULT, dispatch.Receive())) || !dispatch ||
        FAILED(dispatch->GetContainingTypeLib(library.Receive(), &index)) ||
        FAILED(library->GetTypeInfoOfGuid(classId, info.Receive())))
        return {};
    return info;
}

ComPointer<ITypeInfo> DefaultSourceOf(ITypeInfo& classInfo)
{
    TypeAttributes attributes(classInfo);
    if (FAILED(classInfo.GetTypeAttr(attributes.Receive())))
        return {};
    for (UINT i = 0; i < attributes->cImplTypes; ++i) {
        INT flags = 0;
        HREFTYPE reference = 0;
        ComPointer<ITypeInfo> source;
        constexpr INT kWanted = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
        if (SUCCEEDED(classInfo.GetImplTypeFlags(i, &flags)) && (flags & kWanted) == kWanted &&
            SUCCEEDED(classInfo.GetRefTypeOfImplType(i, &reference)) &&
            SUCCEEDED(classInfo.GetRefTypeInfo(reference, source.Receive())))
            return source;
    }
    return {};
}

// IDispatch has no virtual destructor: objects are released, never deleted.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// What listens at the connection point.
class Sink final : public IDispatch {
public:
    Sink(EventSource source, EventListener::Handler handler)
        : source_(std::move(source)), handler_(std::move(handler))
    {
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (id != source_.interfaceId && id != IID_IDispatch && id != IID_IUnknown)
            return E_NOINTERFACE;
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
    {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                     EXCEPINFO*, UINT*) override
    {
        const auto name = source_.names.find(member);
        if (name != source_.names.end() && parameters && handler_)
            handler_(name->second, EventArguments(*parameters));
        return S_OK;
    }

private:
    virtual ~Sink() = default;

    EventSource source_;
    EventListener::Handler handler_;
    std::atomic<ULONG> references_ = 1;
};

#pragma GCC diagnostic pop

} // namespace

EventSource FindEventSource(IDispatch& object, const CLSID& classId)
{
    const ComPointer<ITypeInfo> classInfo = ClassOf(object, classId);
    const ComPointer<ITypeInfo> info =
        classInfo ? DefaultSourceOf(*classInfo.Get()) : ComPointer<ITypeInfo>();
    if (!info)
        return {};
    EventSource source;
    TypeAttributes attributes(*info.Get());
    if (FAILED(info->GetTypeAttr(attributes.Receive())))
        return {};
    source.interfaceId = attributes->guid;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FunctionDescription function(*info.Get());
        ComText name;
        UINT names = 0;
        if (SUCCEEDED(info->GetFuncDesc(i, function.Receive())) &&
            SUCCEEDED(info->GetNames(function->memid, name.Receive(), 1, &names)))
            source.names[function->memid] = Lower(name.Text());
    }
    return source;
}

Value EventArguments::At(std::size_t index) const
{
    if (index >= parameters_.cArgs)
        return {};
    return Value::CopyOf(parameters_.rgvarg[parameters_.cArgs - 1 - index]);
}

long EventArguments::Number(std::size_t index) const { return At(index).Number().value_or(0); }

std::wstring EventArguments::Text(std::size_t index) const { return At(index).Text().value_or(L""); }

ComPointer<IDispatch> EventArguments::Object(std::size_t index) const { return At(index).Object(); }

bool EventListener::Open(IUnknown& object, EventSource source, Handler handler)
{
    Close();
    const auto container = As<IConnectionPointContainer>(&object);
    if (!container || !source.Known() ||
        FAILED(container->FindConnectionPoint(source.interfaceId, point_.Receive())))
        return false;
    const ComPointer<IDispatch> sink(new Sink(std::move(source), std::move(handler)));
    if (SUCCEEDED(point_->Advise(sink.Get(), &cookie_)))
        return true;
    point_ = {};
    return false;
}

void EventListener::Close()
{
    if (point_)
        point_->Unadvise(cookie_);
    point_ = {};
}

} // namespace voxtrel::agent::com
