#pragma once

#include "platform/accessibility.h"

namespace voxtrel::platform {

// Takes every call and reports nothing: for a program that shows no windows, and while screen reading is not built.
class NoAccessibility final : public OVAccessibility {
public:
    void StartServer(std::wstring_view) override {}
    void StartMonitoring() override {}
    void StopMonitoring() override {}
    void Shutdown() override {}
};

} // namespace voxtrel::platform
