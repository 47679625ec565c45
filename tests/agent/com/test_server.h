#pragma once

#include "platform/windows/windows_headers.h"

#include <oleauto.h>

// A character control for tests, in a DLL of its own that registers itself as the system's: it writes down
// what it is asked, and does, fails, hangs and tells what the test wants.
namespace voxtrel::tests {

// How the control tells what its events are.
enum class Described { ByClass, ByLibraryOnly, NotAtAll };

// What the DLL exports as VoxtrelTestServer. May be called on any thread.
struct TestServer {
    // Forgets calls and wishes.
    virtual void Reset() = 0;

    // What was asked so far, a line each: "Characters.Load "genie" "C:\genie.acs"", "genie.Top = 100",
    // "genie.Balloon.Style?". The caller owns the text.
    virtual BSTR Calls() = 0;

    // From now on that call ("genie.Play", "genie.TTSModeID =") raises an exception with that code and,
    // unless it is null, that description.
    virtual void Fail(const wchar_t* call, HRESULT code, const wchar_t* description) = 0;
    // The call fails without an exception; its words are left as the thread's error information.
    virtual void FailPlainly(const wchar_t* call, HRESULT code, const wchar_t* description) = 0;
    // The call does not return until Release.
    virtual void Hang(const wchar_t* call) = 0;
    virtual void Release() = 0;

    // Requests are carried out at once, as messages of the control's thread; or never, until the next Reset.
    virtual void SetIdle(bool idle) = 0;
    // Events are fired from inside the call that causes them.
    virtual void SetHasty(bool hasty) = 0;
    virtual void SetDescribed(Described described) = 0;
    // Fires an event from the control's thread; arguments in the order of their declaration.
    virtual void Fire(const wchar_t* event, const VARIANT* arguments, UINT count) = 0;

    virtual long ObjectsAlive() = 0;

protected:
    ~TestServer() = default;
};

using GetTestServer = TestServer* (*)();

} // namespace voxtrel::tests
