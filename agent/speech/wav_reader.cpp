#include "agent/speech/wav_reader.h"

#include "agent/acs/byte_cursor.h"
#include "agent/speech/adpcm.h"
#include "agent/speech/resampler.h"
#include "agent/speech/synthesizer.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace voxtrel::agent::speech {

namespace {

using acs::ByteCursor;
using Bytes = std::span<const std::uint8_t>;

// Four letters as they stand in the file.
constexpr std::uint32_t Tag(const char (&letters)[5])
{
    return static_cast<std::uint32_t>(letters[0]) | static_cast<std::uint32_t>(letters[1]) << 8 |
           static_cast<std::uint32_t>(letters[2]) << 16 | static_cast<std::uint32_t>(letters[3]) << 24;
}

enum Coding : std::uint16_t { kPlainSamples = 1, kMicrosoftAdpcm = 2, kImaAdpcm = 17 };

constexpr int kMostChannels = 8, kMostPackedChannels = 2;
constexpr std::uint32_t kLowestRate = 4000, kHighestRate = 64000; // what the resampler can turn into ours
constexpr std::size_t kLongest = 60;                              // seconds

struct Format {
    std::uint16_t coding = kPlainSamples;
    int channels = 0;
    std::uint32_t rate = 0;
    int bytes = 0; // of a plain sample
    AdpcmFormat packed;
};

// What the Microsoft kind adds: the samples of a block, which follow from its size, and the predictors.
std::vector<std::pair<int, int>> ReadPredictors(ByteCursor& cursor)
{
    cursor.U16(); // bytes that follow
    cursor.U16();
    std::vector<std::pair<int, int>> predictors(cursor.Count(cursor.U16(), 4));
    for (auto& [first, second] : predictors) {
        first = static_cast<std::int16_t>(cursor.U16());
        second = static_cast<std::int16_t>(cursor.U16());
    }
    return predictors;
}

std::optional<Format> ReadFormat(Bytes chunk)
{
    ByteCursor cursor(chunk);
    Format format;
    format.coding = cursor.U16();
    format.channels = cursor.U16();
    format.rate = cursor.U32();
    cursor.U32(); // bytes a second, which follow from the rest
    format.packed.blockSize = cursor.U16();
    const std::uint16_t bits = cursor.U16();
    format.bytes = bits / 8;
    format.packed.channels = format.channels;
    if (format.coding == kMicrosoftAdpcm)
        format.packed.coefficients = ReadPredictors(cursor);
    const bool plain = format.coding == kPlainSamples && (bits == 8 || bits == 16);
    const bool packed = (format.coding == kMicrosoftAdpcm || format.coding == kImaAdpcm) && bits == 4;
    const int mostChannels = plain ? kMostChannels : kMostPackedChannels;
    if (!cursor.Ok() || (!plain && !packed) || format.channels < 1 || format.channels > mostChannels ||
        format.rate < kLowestRate || format.rate > kHighestRate)
        return std::nullopt;
    return format;
}

std::vector<std::int16_t> PlainSamples(Bytes data, const Format& format, std::size_t mostFrames)
{
    const auto bytes = static_cast<std::size_t>(format.bytes);
    const auto channels = static_cast<std::size_t>(format.channels);
    std::vector<std::int16_t> samples(std::min(data.size() / (bytes * channels), mostFrames) * channels);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::uint8_t* at = data.data() + i * bytes;
        // Samples of 8 bits have their zero in the middle.
        samples[i] = static_cast<std::int16_t>(bytes == 1 ? (*at - 128) * 256 : at[0] | at[1] << 8);
    }
    return samples;
}

std::vector<std::int16_t> OneChannel(const std::vector<std::int16_t>& samples, int channels)
{
    const auto step = static_cast<std::size_t>(channels);
    std::vector<std::int16_t> mixed(samples.size() / step);
    for (std::size_t i = 0; i < mixed.size(); ++i) {
        int sum = 0;
        for (std::size_t channel = 0; channel < step; ++channel)
            sum += samples[i * step + channel];
        mixed[i] = static_cast<std::int16_t>(sum / channels);
    }
    return mixed;
}

std::vector<std::int16_t> Unpacked(Bytes data, const Format& format, std::size_t mostFrames)
{
    switch (format.coding) {
    case kMicrosoftAdpcm:
        return DecodeMicrosoftAdpcm(data, format.packed, mostFrames);
    case kImaAdpcm:
        return DecodeImaAdpcm(data, format.packed, mostFrames);
    default:
        return PlainSamples(data, format, mostFrames);
    }
}

std::vector<std::int16_t> AtOurRate(std::vector<std::int16_t> samples, std::uint32_t rate)
{
    if (rate == kSampleRate)
        return samples;
    Resampler resampler(static_cast<double>(rate) / kSampleRate);
    std::vector<std::int16_t> resampled;
    resampler.Process(samples, resampled);
    resampler.Finish(resampled);
    return resampled;
}

} // namespace

std::vector<std::int16_t> ReadWav(Bytes file)
{
    ByteCursor cursor(file);
    const bool riff = cursor.U32() == Tag("RIFF");
    cursor.U32(); // the length, often wrong
    if (cursor.U32() != Tag("WAVE") || !riff)
        return {};
    std::optional<Format> format;
    std::size_t frames = SIZE_MAX; // as far as the file tells: the last block of packed samples is filled up
    while (cursor.Left() >= 8) {
        const std::uint32_t tag = cursor.U32();
        const std::uint32_t size = cursor.U32();
        const Bytes chunk =
            cursor.Bytes(std::min<std::size_t>(size, cursor.Left())); // the last may claim too much
        if (size % 2 != 0)
            cursor.Bytes(std::min<std::size_t>(1, cursor.Left()));
        if (tag == Tag("fmt "))
            format = ReadFormat(chunk);
        else if (tag == Tag("fact") && chunk.size() >= 4 && format && format->coding != kPlainSamples)
            frames = ByteCursor(chunk).U32();
        else if (tag == Tag("data") && format) {
            const std::size_t most = std::min(frames, kLongest * format->rate);
            return AtOurRate(OneChannel(Unpacked(chunk, *format, most), format->channels), format->rate);
        }
    }
    return {};
}

} // namespace voxtrel::agent::speech
