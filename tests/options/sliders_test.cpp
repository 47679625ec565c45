#include "options/sliders.h"

#include <gtest/gtest.h>

#include <cmath>

namespace voxtrel::options {
namespace {

TEST(Sliders, RangesAreWhatTheVoiceCanDo)
{
    EXPECT_EQ(RangeOf(Slider::pitchslider).lowest, 50);
    EXPECT_EQ(RangeOf(Slider::pitchslider).highest, 400);
    EXPECT_EQ(RangeOf(Slider::speedslider).highest, 250);
    EXPECT_EQ(RangeOf(Slider::volumeslider).lowest, 0);
    EXPECT_EQ(RangeOf(Slider::volumeslider).highest, 65535);
    EXPECT_EQ(RangeOf(Slider::slider_interword).highest, 1000);
}

TEST(Sliders, TwelveStepsOfPitchAreAnOctave)
{
    int pitch = 150;
    for (int step = 0; step < 12; ++step)
        pitch = ValueStepsFrom(Slider::pitchslider, pitch, 1);
    EXPECT_EQ(pitch, 300);
    EXPECT_EQ(ValueStepsFrom(Slider::pitchslider, 150, -12), 75);
}

TEST(Sliders, StepsMoveFromEndToEndThroughTheNaturalValue)
{
    for (const Slider slider : kAllSliders) {
        const SliderRange range = RangeOf(slider);
        int natural = slider == Slider::volumeslider ? 30000 : 150;
        if (slider == Slider::slider_interword)
            natural = 0;
        int value = range.lowest;
        bool met = value == natural;
        int steps = 0;
        while (value < range.highest) {
            const int next = ValueStepsFrom(slider, value, 1);
            ASSERT_GT(next, value);
            value = next;
            met = met || value == natural;
            ASSERT_LT(++steps, 60);
        }
        EXPECT_TRUE(met) << static_cast<int>(slider);
        while (value > range.lowest) {
            const int next = ValueStepsFrom(slider, value, -1);
            ASSERT_LT(next, value);
            value = next;
        }
    }
}

TEST(Sliders, StepFromBetweenTwoStepsDoesNotLeaveTheGap)
{
    EXPECT_EQ(ValueStepsFrom(Slider::pitchslider, 155, 1), 159);
    EXPECT_EQ(ValueStepsFrom(Slider::pitchslider, 155, -1), 150);
}

TEST(Sliders, VolumeStepsAreDecibels)
{
    const int louder = ValueStepsFrom(Slider::volumeslider, 30000, 1);
    EXPECT_NEAR(20 * std::log10(louder / 30000.0), 1.5, 0.01);
    EXPECT_EQ(ValueStepsFrom(Slider::volumeslider, 1000, -1), 0);
    EXPECT_GT(ValueStepsFrom(Slider::volumeslider, 0, 1), 0);
}

TEST(Sliders, LabelsShowTheValueAndItsUnit)
{
    settings::StringTable german;
    german.Set(3960, L"%s Prozent");
    german.Set(3961, L"%s Millisekunden");
    EXPECT_EQ(LabelOf(Slider::pitchslider, 168, german), L"168 (112 Prozent)");
    EXPECT_EQ(LabelOf(Slider::volumeslider, 0, german), L"0 (0 Prozent)");
    EXPECT_EQ(LabelOf(Slider::slider_interword, 40, german), L"40 Millisekunden");
    EXPECT_EQ(LabelOf(Slider::slider_interword, 40, {}), L"40 ms");
}

} // namespace
} // namespace voxtrel::options
