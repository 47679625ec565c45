#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/uia_query.h"
#include "platform/windows/windows_headers.h"

#include <functional>
#include <optional>

namespace voxtrel::platform {

// Asks UI Automation, then Active Accessibility, then the control itself, until one knows what lies at the
// point.
class WindowsAccessibleSource final : public AccessibleSource {
public:
    // Makes UI Automation's client, for the thread that makes the source; an empty one is none.
    using MakeClient = std::function<ComPointer<UiaClient>()>;

    explicit WindowsAccessibleSource(const MakeClient& makeClient);

    std::optional<AccessibleObject> ObjectAt(ScreenPoint point, std::chrono::milliseconds deadline) override;

private:
    bool IsOurCharacter(HWND window) const;

    // Released last: the queries' objects are COM's.
    struct Com {
        Com() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
        ~Com() { CoUninitialize(); }
        Com(const Com&) = delete;
        Com& operator=(const Com&) = delete;
    };

    Com com_;
    UiaQuery uia_;
    DWORD parent_; // the process that started this one; 0 when it is not known
};

} // namespace voxtrel::platform
