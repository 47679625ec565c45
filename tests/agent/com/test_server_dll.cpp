// The DLL of the test server: class factory and registration.

#include "agent/com/test_server_objects.h"
#include "agent/com/test_server_types.h"

#include <array>
#include <cwchar>

namespace voxtrel::tests {
namespace {

HMODULE thisModule = nullptr;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Lives as long as the DLL.
class Factory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        *object = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override
    {
        const HRESULT wished = ServerScript::Get().Carry(L"Create", L"", nullptr);
        if (FAILED(wished))
            return wished;
        const ComPointer<TestControl> control(new TestControl);
        return control->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

#pragma GCC diagnostic pop

const std::wstring kName = L"Agent.Control.2";

std::wstring ClassKey()
{
    std::array<wchar_t, 40> id{};
    StringFromGUID2(kTestControlClass, id.data(), static_cast<int>(id.size()));
    return id.data();
}

bool Write(const std::wstring& key, const wchar_t* value, const std::wstring& text)
{
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), value, REG_SZ, text.c_str(),
                           static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

} // namespace
} // namespace voxtrel::tests

using namespace voxtrel::tests;

extern "C" {

TestServer* VoxtrelTestServer() { return &ServerScript::Get(); }

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID id, void** object)
{
    static Factory factory;
    if (classId != kTestControlClass)
        return CLASS_E_CLASSNOTAVAILABLE;
    return factory.QueryInterface(id, object);
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() { return S_FALSE; }

HRESULT STDAPICALLTYPE DllRegisterServer()
{
    std::array<wchar_t, MAX_PATH> path{};
    GetModuleFileNameW(thisModule, path.data(), static_cast<DWORD>(path.size()));
    const std::wstring server = L"CLSID\\" + ClassKey() + L"\\InprocServer32";
    const bool done = Write(kName + L"\\CLSID", nullptr, ClassKey()) && Write(server, nullptr, path.data()) &&
                      Write(server, L"ThreadingModel", L"Apartment");
    return done ? S_OK : E_FAIL;
}

HRESULT STDAPICALLTYPE DllUnregisterServer()
{
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kName.c_str());
    RegDeleteTreeW(HKEY_CLASSES_ROOT, (L"CLSID\\" + ClassKey()).c_str());
    return S_OK;
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*)
{
    if (reason == DLL_PROCESS_ATTACH)
        thisModule = module;
    return TRUE;
}

} // extern "C"
