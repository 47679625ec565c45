#pragma once

#include <string>
#include <string_view>

namespace voxtrel::platform {

// The accessibility control: what is under the mouse pointer, as its server process last reported it. No call
// waits for the server or reports a failure.
class OVAccessibility {
public:
    virtual ~OVAccessibility() = default;

    // Starts the server program at this path; one that runs already goes on.
    virtual void StartServer(std::wstring_view path) = 0;
    virtual void StartMonitoring() = 0;
    virtual void StopMonitoring() = 0;
    // Ends the server.
    virtual void Shutdown() = 0;

    // The object under the pointer. Each text ends in one closing character, which is no part of what it
    // says: it is all there is when the pointer is over nothing. Empty while the server has not told yet.
    virtual std::wstring ObjectName() const = 0;
    virtual std::wstring ObjectRole() const = 0;
    virtual std::wstring ObjectValue() const = 0;

    // Takes what the server has sent meanwhile, and starts one anew that has ended or hangs. Called often;
    // between two calls the three texts stay as they are.
    virtual void Poll() = 0;
};

} // namespace voxtrel::platform
