#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/accessible_answer.h"
#include "platform/windows/com_pointer.h"
#include "platform/windows/uia_interfaces.h"

#include <optional>
#include <string>

namespace voxtrel::platform {

// The system's UI Automation; empty where it has none. The thread has COM.
ComPointer<UiaClient> SystemUiaClient();

// Asks UI Automation. Used by one thread.
class UiaQuery {
public:
    explicit UiaQuery(ComPointer<UiaClient> client);

    // Without a name where UI Automation cannot tell what is there, or not in time.
    AccessibleAnswer ObjectAt(ScreenPoint point, const Deadline& deadline);

private:
    std::wstring TextOf(UiaElement& element, int property) const;
    bool IsTrue(UiaElement& element, int property) const;
    long NumberOf(UiaElement& element, int property) const;
    std::optional<double> FractionalOf(UiaElement& element, int property) const;
    std::wstring NameOf(UiaElement& element) const;
    std::wstring ValueOf(UiaElement& element) const;
    std::wstring SelectedIn(UiaElement& element) const;
    SwitchState StateOf(UiaElement& element) const;
    ComPointer<UiaElement> ParentOf(UiaElement& element) const;
    ComPointer<UiaElement> WrittenOn(ComPointer<UiaElement> element) const;

    void KeepTo(const Deadline& deadline);

    ComPointer<UiaClient> client_;
    ComPointer<UiaClientWithTimeouts> timeouts_; // empty before Windows 8
    ComPointer<UiaTreeWalker> walker_;
};

} // namespace voxtrel::platform
