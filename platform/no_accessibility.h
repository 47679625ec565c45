#pragma once

#include "platform/accessibility.h"

namespace voxtrel::platform {

// Takes every call and reports nothing: for a program that shows no windows.
class NoAccessibility final : public OVAccessibility {
public:
    void StartServer(std::wstring_view) override {}
    void StartMonitoring() override {}
    void StopMonitoring() override {}
    void Shutdown() override {}
    std::wstring ObjectName() const override { return {}; }
    std::wstring ObjectRole() const override { return {}; }
    std::wstring ObjectValue() const override { return {}; }
    void Poll() override {}
};

} // namespace voxtrel::platform
