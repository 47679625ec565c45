#pragma once

#include "platform/windows/com_pointer.h"
#include "platform/windows/uia_interfaces.h"

#include <atomic>
#include <functional>
#include <map>
#include <string>

// UI Automation as a test wants it: elements with properties, below each other, behind the system's
// interfaces.
namespace voxtrel::tests {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor" // IUnknown has none

// Counts the references that are held, and deletes nothing: a test looks whether all were given back.
template <class Interface> class Counted : public Interface {
public:
    virtual ~Counted() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        *object = Has(id) ? this : nullptr;
        if (!*object)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }

    std::atomic<int> references{0};

protected:
    virtual bool Has(REFIID id) const { return id == IID_IUnknown; }
};

#pragma GCC diagnostic pop

template <class Object, class Interface> HRESULT Give(Object* object, Interface** where)
{
    *where = object;
    if (object)
        object->AddRef();
    return S_OK;
}

class FakeElement;

class FakeElements final : public Counted<platform::UiaElements> {
public:
    HRESULT STDMETHODCALLTYPE get_Length(int* length) override;
    HRESULT STDMETHODCALLTYPE GetElement(int index, platform::UiaElement** element) override;

    FakeElement* only = nullptr;

protected:
    bool Has(REFIID id) const override { return id == IID_IUnknown || id == platform::kUiaElementsInterface; }
};

class FakeElement final : public Counted<platform::UiaElement> {
public:
    FakeElement& Set(int property, const wchar_t* text)
    {
        texts_[property] = text;
        return *this;
    }
    FakeElement& Set(int property, long number)
    {
        numbers_[property] = number;
        return *this;
    }
    FakeElement& Set(int property, bool value)
    {
        switches_[property] = value;
        return *this;
    }
    FakeElement& Set(int property, double value)
    {
        fractions_[property] = value;
        return *this;
    }
    FakeElement& Set(int property, FakeElement& selected)
    {
        selection_.only = &selected;
        selectionProperty_ = property;
        return *this;
    }

    HRESULT STDMETHODCALLTYPE GetCurrentPropertyValue(int property, VARIANT* value) override;

    FakeElement* parent = nullptr;
    std::map<int, int> asked; // property and how often

private:
    std::map<int, std::wstring> texts_;
    std::map<int, long> numbers_;
    std::map<int, bool> switches_;
    std::map<int, double> fractions_;
    FakeElements selection_;
    int selectionProperty_ = 0;
};

class FakeWalker final : public Counted<platform::UiaTreeWalker> {
public:
    HRESULT STDMETHODCALLTYPE GetParentElement(platform::UiaElement* element,
                                               platform::UiaElement** parent) override
    {
        return Give(static_cast<FakeElement*>(element)->parent, parent);
    }
};

// Of Windows 7: its calls take as long as they take.
template <class Interface> class FakeClientOf : public Counted<Interface> {
public:
    HRESULT STDMETHODCALLTYPE ElementFromPoint(POINT point, platform::UiaElement** element) override
    {
        asked = point;
        beforeAnswer();
        return answers ? Give(deepest, element) : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_ControlViewWalker(platform::UiaTreeWalker** walker) override
    {
        return Give(&walker_, walker);
    }

    platform::ComPointer<platform::UiaClient> Pointer()
    {
        this->AddRef();
        return platform::ComPointer<platform::UiaClient>(this);
    }
    int References() const { return this->references + walker_.references; }

    FakeElement* deepest = nullptr;
    bool answers = true;
    std::function<void()> beforeAnswer = [] {};
    POINT asked = {};

private:
    FakeWalker walker_;
};

using FakeOldClient = FakeClientOf<platform::UiaClient>;

class FakeClient final : public FakeClientOf<platform::UiaClientWithTimeouts> {
public:
    HRESULT STDMETHODCALLTYPE put_ConnectionTimeout(DWORD milliseconds) override
    {
        connectionTimeout = milliseconds;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE put_TransactionTimeout(DWORD milliseconds) override
    {
        transactionTimeout = milliseconds;
        return S_OK;
    }

    DWORD connectionTimeout = 0;
    DWORD transactionTimeout = 0;

protected:
    bool Has(REFIID id) const override
    {
        return id == IID_IUnknown || id == platform::kUiaClientInterface ||
               id == platform::kUiaClientWithTimeoutsInterface;
    }
};

inline HRESULT FakeElements::get_Length(int* length)
{
    *length = only ? 1 : 0;
    return S_OK;
}

inline HRESULT FakeElements::GetElement(int index, platform::UiaElement** element)
{
    return index == 0 && only ? Give(only, element) : E_INVALIDARG;
}

inline HRESULT FakeElement::GetCurrentPropertyValue(int property, VARIANT* value)
{
    ++asked[property];
    VariantInit(value);
    if (const auto text = texts_.find(property); text != texts_.end()) {
        value->vt = VT_BSTR;
        value->bstrVal = SysAllocStringLen(text->second.data(), static_cast<UINT>(text->second.size()));
    } else if (const auto number = numbers_.find(property); number != numbers_.end()) {
        value->vt = VT_I4;
        value->lVal = number->second;
    } else if (const auto one = switches_.find(property); one != switches_.end()) {
        value->vt = VT_BOOL;
        value->boolVal = one->second ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (const auto fraction = fractions_.find(property); fraction != fractions_.end()) {
        value->vt = VT_R8;
        value->dblVal = fraction->second;
    } else if (property == selectionProperty_) {
        value->vt = VT_UNKNOWN;
        selection_.AddRef();
        value->punkVal = &selection_;
    }
    return S_OK;
}

} // namespace voxtrel::tests
