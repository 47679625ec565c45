#pragma once

#include "agent/com/test_server.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace voxtrel::tests {

// What the test wants of the server, and what the server was asked.
class ServerScript final : public TestServer {
public:
    static ServerScript& Get();

    void Reset() override;
    BSTR Calls() override;
    void Fail(const wchar_t* call, HRESULT code, const wchar_t* description) override;
    void FailPlainly(const wchar_t* call, HRESULT code, const wchar_t* description) override;
    void Hang(const wchar_t* call) override;
    void Release() override;
    void SetIdle(bool idle) override;
    void SetHasty(bool hasty) override;
    void SetDescribed(Described described) override;
    void Fire(const wchar_t* event, const VARIANT* arguments, UINT count) override;
    long ObjectsAlive() override { return objects; }

    bool Idle();
    bool Hasty();
    Described HowDescribed();

    // Writes the call down; hangs or fails as wished. call is its beginning as in Fail, arguments what
    // follows.
    HRESULT Carry(const std::wstring& call, const std::wstring& arguments, EXCEPINFO* exception);

    // The window of the control's thread that takes fired events as messages; null for none.
    void SetWindow(HWND window);

    volatile LONG objects = 0;

private:
    struct Failure {
        HRESULT code;
        std::wstring description;
        bool plain;
    };

    void WriteToFile(const std::wstring& line);

    std::mutex mutex_;
    std::condition_variable released_;
    std::vector<std::wstring> calls_;
    std::map<std::wstring, Failure> failures_;
    std::wstring hanging_;
    bool idle_ = false;
    bool hasty_ = false;
    Described described_ = Described::ByClass;
    HWND window_ = nullptr;
};

// An event on its way to the control's thread.
struct FiredEvent {
    std::wstring name;
    std::vector<VARIANT> arguments; // in the order of their declaration; owned
};
inline constexpr UINT kFireMessage = WM_APP + 1; // lParam: a FiredEvent, owned

// Raises what a member raises: an exception with a code and words.
HRESULT Raise(EXCEPINFO* exception, HRESULT code, const std::wstring& description);

} // namespace voxtrel::tests
