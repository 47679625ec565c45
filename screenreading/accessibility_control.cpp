#include "screenreading/accessibility_control.h"

#include "settings/string_numbers.h"

#include <algorithm>
#include <utility>

namespace voxtrel::screenreading {
namespace {

using namespace std::chrono_literals;
using platform::SwitchState;

constexpr std::chrono::seconds kFirstPause = 1s;
constexpr std::chrono::seconds kLongestPause = 60s;
constexpr std::chrono::seconds kSteady = 60s; // a server that has run so long was no failure
constexpr std::chrono::seconds kSilence = 5s; // the server gives a sign of life every second

constexpr wchar_t kClosingCharacter = L' ';

} // namespace

AccessibilityControl::AccessibilityControl(platform::ServerProcess& server,
                                           const settings::StringTable& strings, Clock now)
    : server_(server), strings_(strings), now_(std::move(now)), pause_(kFirstPause)
{
}

void AccessibilityControl::StartServer(std::wstring_view path)
{
    path_ = path;
    pause_ = kFirstPause;
    if (!running_ || !server_.Running())
        Launch();
}

void AccessibilityControl::Launch()
{
    ShowNothing();
    reader_ = {};
    started_ = heard_ = now_();
    running_ = server_.Start(path_);
    if (!running_)
        PlanNextStart();
    else if (monitoring_)
        Tell(kStart);
}

void AccessibilityControl::PlanNextStart()
{
    running_ = false;
    ShowNothing();
    if (now_() - started_ >= kSteady)
        pause_ = kFirstPause;
    nextStart_ = now_() + pause_;
    pause_ = std::min(pause_ * 2, kLongestPause);
}

void AccessibilityControl::StartMonitoring()
{
    if (monitoring_)
        return;
    monitoring_ = true;
    heard_ = now_();
    if (running_)
        Tell(kStart);
}

void AccessibilityControl::StopMonitoring()
{
    ShowNothing();
    if (!monitoring_)
        return;
    monitoring_ = false;
    if (running_)
        Tell(kStop);
}

void AccessibilityControl::Shutdown()
{
    monitoring_ = false;
    running_ = false;
    path_.clear();
    ShowNothing();
    server_.Close();
}

void AccessibilityControl::Poll()
{
    if (path_.empty())
        return;
    if (!running_) {
        if (now_() >= nextStart_)
            Launch();
        return;
    }
    const std::string bytes = server_.Read();
    if (!bytes.empty()) {
        heard_ = now_();
        // What was on its way when the monitoring was stopped is of no interest.
        if (const auto object = reader_.Take(bytes); object && monitoring_)
            Show(*object);
    }
    if (!server_.Running()) {
        PlanNextStart();
    } else if (monitoring_ && now_() - heard_ > kSilence) {
        server_.Kill();
        PlanNextStart();
    }
}

void AccessibilityControl::Tell(std::string_view command)
{
    server_.Write(std::string(command).append("\n"));
}

void AccessibilityControl::Show(const platform::AccessibleObject& object)
{
    name_ = object.name + kClosingCharacter;
    role_ = object.role + kClosingCharacter;
    value_ = object.value;
    if (const std::wstring state = StateText(object.state); !state.empty())
        value_ += (value_.empty() ? L"" : L", ") + state;
    value_ += kClosingCharacter;
}

void AccessibilityControl::ShowNothing()
{
    name_.clear();
    role_.clear();
    value_.clear();
}

std::wstring AccessibilityControl::StateText(SwitchState state) const
{
    namespace strings = settings::strings;
    switch (state) {
    case SwitchState::None:
        return {};
    case SwitchState::Unchecked:
        return strings_.Text(strings::kStateUnchecked);
    case SwitchState::Checked:
        return strings_.Text(strings::kStateChecked);
    case SwitchState::PartlyChecked:
        return strings_.Text(strings::kStatePartlyChecked);
    case SwitchState::Released:
        return strings_.Text(strings::kStateReleased);
    case SwitchState::Pressed:
        return strings_.Text(strings::kStatePressed);
    }
    return {};
}

} // namespace voxtrel::screenreading
