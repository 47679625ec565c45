#pragma once

#include "platform/messages.h"

#include <wx/window.h>

namespace voxtrel::app {

// Message boxes over the main window.
class MessageBoxes final : public platform::Messages {
public:
    // parent may be null; it outlives the boxes.
    explicit MessageBoxes(wxWindow* parent) : parent_(parent) {}

    void ShowExclamation(std::wstring_view text) override;
    void ShowInformation(std::wstring_view text) override;

private:
    wxWindow* parent_;
};

} // namespace voxtrel::app
