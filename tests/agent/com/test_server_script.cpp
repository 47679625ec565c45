#include "agent/com/test_server_script.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace voxtrel::tests {
namespace {

// A test that forgets to release what hangs ends all the same.
constexpr std::chrono::seconds kLongestHang{60};

void LeaveWords(const std::wstring& description)
{
    ICreateErrorInfo* words = nullptr;
    if (FAILED(CreateErrorInfo(&words)))
        return;
    IErrorInfo* info = nullptr;
    words->SetDescription(const_cast<LPOLESTR>(description.c_str()));
    if (SUCCEEDED(words->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)))) {
        SetErrorInfo(0, info);
        info->Release();
    }
    words->Release();
}

} // namespace

ServerScript& ServerScript::Get()
{
    static ServerScript script;
    return script;
}

void ServerScript::Reset()
{
    const std::lock_guard lock(mutex_);
    calls_.clear();
    failures_.clear();
    hanging_.clear();
    idle_ = hasty_ = false;
    described_ = Described::ByClass;
    released_.notify_all();
}

BSTR ServerScript::Calls()
{
    const std::lock_guard lock(mutex_);
    std::wstring text;
    for (const std::wstring& call : calls_)
        text += call + L"\n";
    return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

void ServerScript::Fail(const wchar_t* call, HRESULT code, const wchar_t* description)
{
    const std::lock_guard lock(mutex_);
    failures_[call] = {code, description ? description : L"", false};
}

void ServerScript::FailPlainly(const wchar_t* call, HRESULT code, const wchar_t* description)
{
    const std::lock_guard lock(mutex_);
    failures_[call] = {code, description ? description : L"", true};
}

void ServerScript::Hang(const wchar_t* call)
{
    const std::lock_guard lock(mutex_);
    hanging_ = call;
}

void ServerScript::Release()
{
    const std::lock_guard lock(mutex_);
    hanging_.clear();
    released_.notify_all();
}

void ServerScript::SetIdle(bool idle)
{
    const std::lock_guard lock(mutex_);
    idle_ = idle;
}

void ServerScript::SetHasty(bool hasty)
{
    const std::lock_guard lock(mutex_);
    hasty_ = hasty;
}

void ServerScript::SetDescribed(Described described)
{
    const std::lock_guard lock(mutex_);
    described_ = described;
}

bool ServerScript::Idle()
{
    const std::lock_guard lock(mutex_);
    return idle_;
}

bool ServerScript::Hasty()
{
    const std::lock_guard lock(mutex_);
    return hasty_;
}

Described ServerScript::HowDescribed()
{
    const std::lock_guard lock(mutex_);
    return described_;
}

void ServerScript::SetWindow(HWND window)
{
    const std::lock_guard lock(mutex_);
    window_ = window;
}

void ServerScript::Fire(const wchar_t* event, const VARIANT* arguments, UINT count)
{
    auto* fired = new FiredEvent{event, {}};
    for (UINT i = 0; i < count; ++i) {
        VARIANT copy = {};
        VariantCopy(&copy, const_cast<VARIANT*>(&arguments[i]));
        fired->arguments.push_back(copy);
    }
    const std::lock_guard lock(mutex_);
    if (!window_ || !PostMessageW(window_, kFireMessage, 0, reinterpret_cast<LPARAM>(fired)))
        std::abort(); // there is no control
}

HRESULT ServerScript::Carry(const std::wstring& call, const std::wstring& arguments, EXCEPINFO* exception)
{
    std::unique_lock lock(mutex_);
    calls_.push_back(call + (arguments.empty() ? L"" : L" " + arguments));
    WriteToFile(calls_.back());
    released_.wait_for(lock, kLongestHang, [&] { return hanging_ != call; });
    const auto failure = failures_.find(call);
    if (failure == failures_.end())
        return S_OK;
    if (!failure->second.plain)
        return Raise(exception, failure->second.code, failure->second.description);
    if (!failure->second.description.empty())
        LeaveWords(failure->second.description);
    return failure->second.code;
}

// For programs that the test only starts.
void ServerScript::WriteToFile(const std::wstring& line)
{
    const char* const name = std::getenv("VOXTREL_TEST_SERVER_LOG");
    if (!name)
        return;
    const int size = WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()), nullptr, 0,
                                         nullptr, nullptr);
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()), text.data(), size, nullptr,
                        nullptr);
    if (FILE* const file = std::fopen(name, "ab")) {
        std::fputs((text + "\n").c_str(), file);
        std::fclose(file);
    }
}

HRESULT Raise(EXCEPINFO* exception, HRESULT code, const std::wstring& description)
{
    if (exception) {
        *exception = {};
        exception->scode = code;
        exception->bstrDescription = description.empty() ? nullptr : SysAllocString(description.c_str());
    }
    return DISP_E_EXCEPTION;
}

} // namespace voxtrel::tests
