#pragma once

#include <string>
#include <string_view>

namespace voxtrel::platform {

// The accessibility control: what is under the mouse pointer, as its server process last reported it.
class OVAccessibility {
public:
    virtual ~OVAccessibility() = default;

    virtual void StartServer(std::wstring_view path) = 0;
    virtual void StartMonitoring() = 0;
    virtual void StopMonitoring() = 0;
    virtual void Shutdown() = 0;
};

} // namespace voxtrel::platform
