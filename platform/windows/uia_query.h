#pragma once

#include "platform/accessible_source.h"
#include "platform/windows/com_pointer.h"
#include "platform/windows/uia_interfaces.h"

#include <optional>
#include <string>

namespace voxtrel::platform {

// Asks UI Automation. Used by one thread, which has COM.
class UiaQuery {
public:
    UiaQuery();

    // Nothing where UI Automation cannot tell what is there.
    std::optional<AccessibleObject> ObjectAt(ScreenPoint point);

private:
    std::wstring TextOf(UiaElement& element, int property) const;
    bool IsTrue(UiaElement& element, int property) const;
    long NumberOf(UiaElement& element, int property) const;
    std::optional<double> FractionalOf(UiaElement& element, int property) const;
    std::wstring NameOf(UiaElement& element) const;
    std::wstring ValueOf(UiaElement& element) const;
    SwitchState StateOf(UiaElement& element) const;
    ComPointer<UiaElement> ParentOf(UiaElement& element) const;
    ComPointer<UiaElement> WrittenOn(ComPointer<UiaElement> element) const;

    ComPointer<UiaClient> client_;
    ComPointer<UiaTreeWalker> walker_;
};

} // namespace voxtrel::platform
