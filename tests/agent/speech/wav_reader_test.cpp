#include "agent/speech/wav_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
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

TEST(ReadWav, StandsAnyDamage)
{
    std::mt19937 random(3);
    const Bytes whole = Wave({.rate = 22050, .bits = 8}, Bytes(200, 100));
    for (int i = 0; i < 3000; ++i) {
        Bytes bytes = whole;
        bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        bytes.resize(bytes.size() - random() % 100);
        EXPECT_LE(ReadWav(bytes).size(), 4 * whole.size());
    }
}

} // namespace
} // namespace voxtrel::agent::speech
