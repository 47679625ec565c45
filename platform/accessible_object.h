#pragma once

#include <string>

namespace voxtrel::platform {

// What can be switched, and how it is switched at this moment.
enum class SwitchState { None, Unchecked, Checked, PartlyChecked, Released, Pressed };

// An object of another program as it describes itself. Without a name it has nothing to say.
struct AccessibleObject {
    std::wstring name{};
    std::wstring role{};  // in the user's language where the platform gives it
    std::wstring value{}; // empty for none, and always for a password
    SwitchState state = SwitchState::None;

    bool operator==(const AccessibleObject&) const = default;
};

} // namespace voxtrel::platform
