#pragma once

#include <string_view>

namespace voxtrel::platform {

// Message boxes.
class Messages {
public:
    virtual ~Messages() = default;

    virtual void ShowExclamation(std::wstring_view text) = 0;
    virtual void ShowInformation(std::wstring_view text) = 0;
};

} // namespace voxtrel::platform
