#include "agent/speech/wav_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace voxtrel::agent::speech {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Samples = std::vector<std::int16_t>;

void Append(Bytes& bytes, std::string_view text) { bytes.insert(bytes.end(), text.begin(), text.end()); }

void Append(Bytes& bytes, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

struct Format {
    std::uint32_t coding = 1;
    std::uint32_t channels = 1;
    std::uint32_t rate = 16000;
    std::uint32_t bits = 16;
};

Bytes Wave(const Format& format, const Bytes& data)
{
    Bytes bytes;
    Append(bytes, "RIFF");
    Append(bytes, static_cast<std::uint32_t>(36 + data.size()), 4);
    Append(bytes, "WAVEfmt ");
    Append(bytes, 16, 4);
    Append(bytes, format.coding, 2);
    Append(bytes, format.channels, 2);
    Append(bytes, format.rate, 4);
    Append(bytes, format.rate * format.channels * format.bits / 8, 4);
    Append(bytes, format.channels * format.bits / 8, 2);
    Append(bytes, format.bits, 2);
    Append(bytes, "data");
    Append(bytes, static_cast<std::uint32_t>(data.size()), 4);
    bytes.insert(bytes.end(), data.begin(), data.end());
    return bytes;
}

TEST(ReadWav, TakesSamplesAtOurRateAsTheyAre)
{
    EXPECT_EQ(ReadWav(Wave({}, {0x01, 0x00, 0xFF, 0xFF, 0x00, 0x80})), (Samples{1, -1, -32768}));
}

TEST(ReadWav, TakesEightBitsAboutTheirMiddle)
{
    EXPECT_EQ(ReadWav(Wave({.bits = 8}, {128, 255, 0})), (Samples{0, 127 * 256, -32768}));
}

TEST(ReadWav, AddsUpTheChannels)
{
    EXPECT_EQ(ReadWav(Wave({.channels = 2, .bits = 8}, {228, 128, 128, 128})), (Samples{12800, 0}));
}

TEST(ReadWav, BringsOtherRatesToOurs)
{
    const Samples samples = ReadWav(Wave({.rate = 8000, .bits = 8}, Bytes(800, 228)));
    EXPECT_NEAR(static_cast<double>(samples.size()), 1600, 2);
    EXPECT_NEAR(samples[800], 25600, 100);
}

TEST(ReadWav, FindsTheSamplesBehindOtherChunks)
{
    Bytes bytes = Wave({}, {5, 0});
    Bytes list;
    Append(list, "LIST");
    Append(list, 3, 4);
    Append(list, "odd");
    list.push_back(0);
    bytes.insert(bytes.begin() + 36, list.begin(), list.end());
    EXPECT_EQ(ReadWav(bytes), (Samples{5}));
}

TEST(ReadWav, TakesWhatThereIsOfACutFile)
{
    Bytes bytes = Wave({}, {5, 0, 6, 0, 7, 0});
    bytes.resize(bytes.size() - 3);
    EXPECT_EQ(ReadWav(bytes), (Samples{5}));
}

TEST(ReadWav, HasNothingOfWhatItDoesNotKnow)
{
    EXPECT_TRUE(ReadWav({}).empty());
    EXPECT_TRUE(ReadWav(Bytes(100, 'x')).empty());
    EXPECT_TRUE(ReadWav(Wave({.coding = 2, .bits = 4}, Bytes(100, 1))).empty());
    EXPECT_TRUE(ReadWav(Wave({.bits = 24}, Bytes(99, 1))).empty());
    EXPECT_TRUE(ReadWav(Wave({.channels = 0}, Bytes(100, 1))).empty());
    EXPECT_TRUE(ReadWav(Wave({.rate = 1}, Bytes(100, 1))).empty());
}

// Made with SoX, plain and packed.
Bytes SoundFile(const std::string& name)
{
    std::ifstream file(std::string(VOXTREL_SOUNDS) + "/" + name + ".wav", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// How much louder the sound is than what packing has changed in it, in decibels.
double LikenessOf(const Samples& packed, const Samples& plain)
{
    double sound = 0, change = 1;
    for (std::size_t i = 0; i < std::min(packed.size(), plain.size()); ++i) {
        sound += std::pow(plain[i], 2);
        change += std::pow(packed[i] - plain[i], 2);
    }
    return 10 * std::log10(sound / change);
}

struct PackedCase {
    const char* packed;
    const char* plain;
};

TEST(ReadWav, UnpacksAdpcm)
{
    for (const auto& [packed, plain] : {PackedCase{"microsoft_adpcm", "tone"},
                                        {"microsoft_adpcm_stereo", "two"},
                                        {"ima_adpcm", "tone"},
                                        {"ima_adpcm_stereo", "two"}}) {
        SCOPED_TRACE(packed);
        const Samples expected = ReadWav(SoundFile(plain));
        const Samples samples = ReadWav(SoundFile(packed));
        ASSERT_GE(expected.size(), 900U);
        EXPECT_GE(samples.size(), expected.size());
        EXPECT_GT(LikenessOf(samples, expected), 20);
    }
}

TEST(ReadWav, TakesThePackedSamplesThatTheFileTellsOf)
{
    EXPECT_EQ(ReadWav(SoundFile("microsoft_adpcm")).size(), ReadWav(SoundFile("tone")).size());
}

TEST(ReadWav, TakesWhatThereIsOfACutPackedFile)
{
    for (const char* name : {"microsoft_adpcm", "ima_adpcm"}) {
        Bytes bytes = SoundFile(name);
        const Samples whole = ReadWav(bytes);
        bytes.resize(bytes.size() / 2);
        const Samples half = ReadWav(bytes);
        ASSERT_GT(half.size(), 700U) << name;
        EXPECT_TRUE(std::equal(half.begin(), half.end(), whole.begin())) << name;
    }
}

TEST(ReadWav, StandsAnyDamage)
{
    std::mt19937 random(3);
    for (const Bytes& whole : {Wave({.rate = 22050, .bits = 8}, Bytes(200, 100)),
                               SoundFile("microsoft_adpcm"), SoundFile("ima_adpcm_stereo")}) {
        for (int i = 0; i < 3000; ++i) {
            Bytes bytes = whole;
            bytes[random() % std::min<std::size_t>(bytes.size(), 200)] = static_cast<std::uint8_t>(random());
            bytes.resize(bytes.size() - random() % 100);
            EXPECT_LE(ReadWav(bytes).size(), 8 * whole.size());
        }
    }
}

} // namespace
} // namespace voxtrel::agent::speech
