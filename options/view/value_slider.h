#pragma once

#include "options/options_form.h"

#include <wx/slider.h>

namespace voxtrel::options {

// A slider whose keys move it by steps for the ear: arrows by one, Page Up and Page Down by four, Home and
// End to the ends. It tells of a change as any slider does.
class ValueSlider final : public wxSlider {
public:
    ValueSlider(wxWindow* parent, const char* name, Slider which);

private:
    void OnKey(wxKeyEvent& event);
    void MoveTo(int value);

    Slider which_;
};

} // namespace voxtrel::options
