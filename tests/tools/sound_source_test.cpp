#include "tools/acsc/sound_source.h"

#include "tests/tools/sample_source.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace voxtrel::acsc {

namespace {

constexpr std::size_t kHeaderBytes = 44;
constexpr int kRate = 16000;

std::vector<std::uint8_t> Render(const std::string& tones)
{
    return RenderSound(ParseSound(ParseStatements("sound s {\n" + tones + "\n}\n").front()));
}

std::vector<int> Samples(const std::string& tones)
{
    const std::vector<std::uint8_t> file = Render(tones);
    std::vector<int> samples;
    for (std::size_t i = kHeaderBytes; i + 1 < file.size(); i += 2)
        samples.push_back(static_cast<std::int16_t>(file[i] | file[i + 1] << 8));
    return samples;
}

int Peak(const std::vector<int>& samples)
{
    int peak = 0;
    for (const int sample : samples)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

// How often the samples from begin to end come up through zero.
int Waves(const std::vector<int>& samples, std::size_t begin, std::size_t end)
{
    int waves = 0;
    for (std::size_t i = begin + 1; i < end; ++i)
        waves += samples[i - 1] < 0 && samples[i] >= 0;
    return waves;
}

std::uint32_t NumberAt(const std::vector<std::uint8_t>& bytes, std::size_t at)
{
    return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 |
           static_cast<std::uint32_t>(bytes[at + 3]) << 24;
}

} // namespace

TEST(RenderSound, MakesAWholeWaveFile)
{
    const std::vector<std::uint8_t> file = Render("soft 440 length 50");
    ASSERT_EQ(file.size(), kHeaderBytes + 2 * kRate / 2);
    EXPECT_EQ(std::string(file.begin(), file.begin() + 4), "RIFF");
    EXPECT_EQ(NumberAt(file, 4), file.size() - 8);
    EXPECT_EQ(NumberAt(file, 24), static_cast<std::uint32_t>(kRate));
    EXPECT_EQ(NumberAt(file, 40), file.size() - kHeaderBytes);
}

TEST(RenderSound, HasThePitchThatIsWritten)
{
    for (const char* timbre : {"soft", "reed"}) {
        const auto samples = Samples(std::string(timbre) + " 500 length 100");
        EXPECT_NEAR(Waves(samples, 0, samples.size()), 500, 5) << timbre;
    }
}

TEST(RenderSound, GlidesFromOnePitchToTheOther)
{
    const auto samples = Samples("soft 200 to 800 length 100");
    // A tenth of a second each, about 0.15 and 0.8 of the way up two octaves.
    EXPECT_NEAR(Waves(samples, 1600, 3200), 200 * 0.1 * std::pow(4.0, 0.15), 2);
    EXPECT_NEAR(Waves(samples, 12000, 13600), 200 * 0.1 * std::pow(4.0, 0.8), 2);
}

TEST(RenderSound, StartsAToneWhenItsTimeHasCome)
{
    const auto samples = Samples("wood 600 length 10\nwood 600 at 50 length 10");
    ASSERT_EQ(samples.size(), 9600u);
    EXPECT_EQ(Peak({samples.begin() + 1600, samples.begin() + 8000}), 0);
    EXPECT_GT(Peak({samples.begin() + 8000, samples.end()}), 3000);
}

TEST(RenderSound, EndsInSilenceWithEveryTimbre)
{
    for (const char* timbre : {"soft", "reed", "bell", "wood", "noise"}) {
        const auto samples = Samples(std::string(timbre) + " 700 length 30 volume 1");
        EXPECT_GT(Peak(samples), 2000) << timbre;
        EXPECT_LT(std::abs(samples.front()), 300) << timbre;
        EXPECT_LT(std::abs(samples.back()), 300) << timbre;
    }
}

TEST(RenderSound, KeepsManyLoudTonesWithinTheRange)
{
    std::string tones;
    for (int i = 0; i < 8; ++i)
        tones += "soft 400 length 20 volume 1\n";
    EXPECT_NEAR(Peak(Samples(tones)), 0.9 * 32767, 2);
}

TEST(RenderSound, IsTheSameEveryTime)
{
    EXPECT_EQ(Render("noise 900 length 30"), Render("noise 900 length 30"));
}

TEST(ParseSound, TellsMistakesWithTheirLine)
{
    EXPECT_EQ(samples::MistakeIn("sound s {\nsoft 440\ndrum 100\n}\n"),
              "3: a tone is soft, reed, bell, wood or noise");
    EXPECT_EQ(samples::MistakeIn("sound s {\nsoft 9000\n}\n"), "2: a pitch lies between 20 and 7000 hertz");
    EXPECT_EQ(samples::MistakeIn("sound s {\nsoft 440 at 500 length 200\n}\n"),
              "2: a sound lasts six seconds at most");
    EXPECT_EQ(samples::MistakeIn("sound s {\n}\n"), "1: the sound 's' has no tones");
    EXPECT_EQ(samples::MistakeIn("sound s {\nsoft 440\n}\nsound s {\nsoft 440\n}\n"),
              "4: there is a sound 's' already");
    EXPECT_EQ(samples::MistakeIn("animation A { frame rest sound s }\n"), "1: no sound is called 's'");
}

} // namespace voxtrel::acsc
