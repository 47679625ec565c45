#pragma once

#include "agent/com/test_server_script.h"

#include "platform/windows/com_pointer.h"

#include <ocidl.h>

#include <deque>
#include <map>
#include <string>
#include <vector>

// The objects of the test server: the documented members, by name only.
namespace voxtrel::tests {

using platform::ComPointer;

// IDispatch has no virtual destructor: objects are released, never deleted.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// What a member is asked with: the arguments in their order, and where its value goes.
struct Asked {
    std::wstring member; // as the object declares it
    WORD kind;           // DISPATCH_METHOD, DISPATCH_PROPERTYGET or DISPATCH_PROPERTYPUT
    std::vector<VARIANT*> arguments;
    VARIANT* result; // may be null
    EXCEPINFO* exception;
};

// An object whose members have names, and numbers that are others in each process.
class NamedMembers : public IDispatch {
public:
    explicit NamedMembers(std::vector<std::wstring> members);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override;

    bool HeldByOthers() const { return references_ > 1; }

protected:
    virtual ~NamedMembers();

    virtual HRESULT Do(const Asked& asked) = 0;

private:
    std::vector<std::wstring> members_;
    LONG references_ = 1;
};

// An object whose properties are simple values of the kinds that they begin with.
class WithProperties : public NamedMembers {
public:
    WithProperties(std::wstring name, std::map<std::wstring, VARIANT> properties,
                   const std::vector<std::wstring>& methods);

protected:
    ~WithProperties() override;

    // Writes the call down and reads or writes the property.
    HRESULT DoProperty(const Asked& asked);
    HRESULT Access(const Asked& asked);
    HRESULT Carry(const Asked& asked) const;

    std::wstring name_;
    std::map<std::wstring, VARIANT> properties_;
};

class TestControl;

// What a method that is queued gives back.
class TestRequest final : public WithProperties {
public:
    TestRequest();
    void SetState(long status, long number, const wchar_t* description);

protected:
    HRESULT Do(const Asked& asked) override { return Access(asked); }
};

class TestBalloon final : public WithProperties {
public:
    explicit TestBalloon(const std::wstring& owner);

protected:
    HRESULT Do(const Asked& asked) override { return DoProperty(asked); }
};

class TestCharacter final : public WithProperties {
public:
    TestCharacter(std::wstring id, TestControl& control);

    // Carries the request out that waits longest.
    void Work();

protected:
    HRESULT Do(const Asked& asked) override;

private:
    struct Waiting {
        ComPointer<TestRequest> request;
        std::vector<long> bookmarks;
        bool speaks = false;
    };

    HRESULT Ask(const Asked& asked);
    HRESULT StopAll(const Asked& asked);

    TestControl& control_;
    ComPointer<TestBalloon> balloon_;
    std::deque<Waiting> waiting_;
};

class TestCharacters final : public NamedMembers {
public:
    explicit TestCharacters(TestControl& control);
    void WorkOn(const std::wstring& id);

protected:
    HRESULT Do(const Asked& asked) override;

private:
    HRESULT Load(const Asked& asked);
    HRESULT Give(const Asked& asked);

    TestControl& control_;
    // With null for those that could not be loaded and occupy their identifier.
    std::map<std::wstring, ComPointer<TestCharacter>> loaded_;
};

class TestControl final : public NamedMembers,
                          public IProvideClassInfo2,
                          public IConnectionPointContainer,
                          public IConnectionPoint {
public:
    TestControl();

    // Of a queued request; later, as a message, unless the script is in haste.
    void WorkSoon(const std::wstring& character);
    void Fire(const wchar_t* event, const std::vector<VARIANT>& arguments);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return NamedMembers::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return NamedMembers::Release(); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    bool Connected() const { return connected_; }

protected:
    ~TestControl() override;
    HRESULT Do(const Asked& asked) override;

private:
    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    bool connected_ = false;
    ComPointer<TestCharacters> characters_;
    ComPointer<IDispatch> sink_;
};

#pragma GCC diagnostic pop

} // namespace voxtrel::tests
