#include "options/sliders.h"

#include "settings/number_conversions.h"
#include "settings/string_numbers.h"

#include <algorithm>
#include <cmath>

namespace voxtrel::options {
namespace {

constexpr int kPauseStep = 20;     // milliseconds
constexpr int kFaintVolume = 1000; // the next step down is silence

struct Scale {
    SliderRange range;
    int natural;   // of the voice itself; 0 for a slider of milliseconds
    double factor; // of one step
};

const Scale& ScaleOf(Slider slider)
{
    static const Scale kPitch{{50, 400}, 150, std::exp2(1.0 / 12)};
    static const Scale kSpeed{{50, 250}, 150, 1.05};
    static const Scale kVolume{{0, 65535}, 30000, std::pow(10.0, 1.5 / 20)};
    static const Scale kPause{{0, 1000}, 0, 0};
    switch (slider) {
    case Slider::pitchslider:
        return kPitch;
    case Slider::speedslider:
        return kSpeed;
    case Slider::volumeslider:
        return kVolume;
    case Slider::slider_interword:
        break;
    }
    return kPause;
}

// Steps are counted from the natural value, so that it is met on the way whatever value the slider was
// dragged to.
int RatioStepsFrom(const Scale& scale, int value, int steps)
{
    const double place =
        std::log(std::max(value, 1) / static_cast<double>(scale.natural)) / std::log(scale.factor);
    const double nearest = std::round(place);
    const int there = static_cast<int>(std::lround(scale.natural * std::pow(scale.factor, nearest)));
    // From between two steps the first step goes to the nearer end of the gap in its direction.
    double from = nearest;
    if (there != value)
        from = steps > 0 ? std::floor(place) : std::ceil(place);
    return static_cast<int>(std::lround(scale.natural * std::pow(scale.factor, from + steps)));
}

} // namespace

SliderRange RangeOf(Slider slider) { return ScaleOf(slider).range; }

int ValueStepsFrom(Slider slider, int value, int steps)
{
    const Scale& scale = ScaleOf(slider);
    int moved = 0;
    if (scale.natural == 0)
        moved = value + steps * kPauseStep;
    else if (slider == Slider::volumeslider && steps > 0 && value < kFaintVolume)
        moved = RatioStepsFrom(scale, kFaintVolume, steps);
    else
        moved = RatioStepsFrom(scale, value, steps);
    if (slider == Slider::volumeslider && moved < kFaintVolume)
        moved = 0;
    return std::clamp(moved, scale.range.lowest, scale.range.highest);
}

std::wstring LabelOf(Slider slider, int value, const settings::StringTable& strings)
{
    namespace numbers = settings::strings;
    const int natural = ScaleOf(slider).natural;
    if (natural == 0)
        return settings::FormatResString(strings.Find(numbers::kMilliseconds).value_or(L"%s ms"),
                                         settings::FormatNumber(value));
    const auto percent = static_cast<int>(std::lround(100.0 * value / natural));
    return settings::FormatNumber(value) + L" (" +
           settings::FormatResString(strings.Find(numbers::kPercent).value_or(L"%s %"),
                                     settings::FormatNumber(percent)) +
           L")";
}

} // namespace voxtrel::options
