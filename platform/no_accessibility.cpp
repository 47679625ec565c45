#include "platform/accessibility.h"

namespace voxtrel::platform {
namespace {

// Stands in while screen reading is not part of the program: takes every call and reports nothing.
class NoAccessibility final : public OVAccessibility {
public:
    void StartServer(std::wstring_view) override {}
    void StartMonitoring() override {}
    void StopMonitoring() override {}
    void Shutdown() override {}
};

} // namespace

std::unique_ptr<OVAccessibility> MakeAccessibility() { return std::make_unique<NoAccessibility>(); }

} // namespace voxtrel::platform
