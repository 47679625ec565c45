#pragma once

#include "fakes/call_log.h"
#include "platform/accessibility.h"
#include "platform/desktop.h"
#include "platform/messages.h"

#include <string>
#include <vector>

namespace voxtrel::tests {

class FakeDesktop final : public platform::Desktop {
public:
    explicit FakeDesktop(CallLog& log) : log_(log) {}

    void ShowWindow(platform::NativeWindow window, int command) override
    {
        log_.Add(L"ShowWindow " + std::to_wstring(window) + L" " + std::to_wstring(command));
    }
    void SetWindowPos(platform::NativeWindow window, platform::NativeWindow insertAfter, int x, int y,
                      int width, int height, unsigned flags) override
    {
        const bool topmost = insertAfter == platform::kTopmost;
        log_.Add(L"SetWindowPos " + std::to_wstring(window) +
                 (topmost ? L" topmost" : L" " + std::to_wstring(insertAfter)) + L" " + std::to_wstring(x) +
                 L" " + std::to_wstring(y) + L" " + std::to_wstring(width) + L" " + std::to_wstring(height) +
                 L" " + std::to_wstring(flags));
    }
    int ScreenWidth() const override { return screenWidth; }
    int ScreenHeight() const override { return screenHeight; }

    int screenWidth = 1920;
    int screenHeight = 1080;

private:
    CallLog& log_;
};

class FakeMessages final : public platform::Messages {
public:
    explicit FakeMessages(CallLog& log) : log_(log) {}

    void ShowExclamation(std::wstring_view text) override
    {
        log_.Add(L"ShowExclamation " + std::wstring(text));
    }
    void ShowInformation(std::wstring_view text) override
    {
        log_.Add(L"ShowInformation " + std::wstring(text));
    }

private:
    CallLog& log_;
};

class FakeAccessibility final : public platform::OVAccessibility {
public:
    explicit FakeAccessibility(CallLog& log) : log_(log) {}

    void StartServer(std::wstring_view path) override { log_.Add(L"StartServer " + std::wstring(path)); }
    void StartMonitoring() override { log_.Add(L"StartMonitoring"); }
    void StopMonitoring() override { log_.Add(L"StopMonitoring"); }
    void Shutdown() override { log_.Add(L"Shutdown"); }
    std::wstring ObjectName() const override { return name; }
    std::wstring ObjectRole() const override
    {
        ++timesAsked;
        return role;
    }
    std::wstring ObjectValue() const override { return value; }
    void Poll() override {}

    // With their closing characters.
    std::wstring name;
    std::wstring role;
    std::wstring value;
    mutable int timesAsked = 0; // for the role

private:
    CallLog& log_;
};

} // namespace voxtrel::tests
