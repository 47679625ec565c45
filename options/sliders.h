#pragma once

#include "options/options_form.h"

namespace voxtrel::options {

struct SliderRange {
    int lowest = 0;
    int highest = 0;
};

// In the unit of the setting: what the voice can do, and a pause of up to a second (milliseconds).
SliderRange RangeOf(Slider slider);

// The value some steps further, downwards for a negative number. A step is about the least difference that is
// clearly heard, wherever in the range: a semitone, a twentieth of the speed, a decibel and a half.
int ValueStepsFrom(Slider slider, int value, int steps);

// The value with its unit.
std::wstring LabelOf(Slider slider, int value, const settings::StringTable& strings);

} // namespace voxtrel::options
