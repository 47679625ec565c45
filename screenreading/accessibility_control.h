#pragma once

#include "platform/accessibility.h"
#include "platform/server_process.h"
#include "screenreading/server_protocol.h"
#include "settings/string_table.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace voxtrel::screenreading {

// The accessibility control over a server process: what the server sent last, kept until it sends more. A
// server that cannot be started, ends or falls silent while it should watch the pointer is started again,
// after pauses that grow from one second to a minute; the user is told nothing.
class AccessibilityControl final : public platform::OVAccessibility {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // server and strings outlive the control.
    AccessibilityControl(platform::ServerProcess& server, const settings::StringTable& strings,
                         Clock now = std::chrono::steady_clock::now);

    void StartServer(std::wstring_view path) override;
    void StartMonitoring() override;
    void StopMonitoring() override;
    void Shutdown() override;
    void Poll() override;

    std::wstring ObjectName() const override { return name_; }
    std::wstring ObjectRole() const override { return role_; }
    std::wstring ObjectValue() const override { return value_; }

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    void Launch();
    void PlanNextStart();
    void Tell(std::string_view command);
    void Show(const platform::AccessibleObject& object);
    void ShowNothing();
    std::wstring StateText(platform::SwitchState state) const;

    platform::ServerProcess& server_;
    const settings::StringTable& strings_;
    Clock now_;

    std::wstring path_; // empty while no server is wanted
    bool monitoring_ = false;
    bool running_ = false; // as far as is known
    TimePoint started_;
    TimePoint heard_; // when the server last gave a sign of life
    TimePoint nextStart_;
    std::chrono::seconds pause_{};
    ObjectReader reader_;

    // With their closing characters.
    std::wstring name_;
    std::wstring role_;
    std::wstring value_;
};

} // namespace voxtrel::screenreading
