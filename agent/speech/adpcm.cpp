#include "agent/speech/adpcm.h"

#include "agent/acs/byte_cursor.h"

#include <algorithm>
#include <array>

namespace voxtrel::agent::speech {

namespace {

using acs::ByteCursor;
using Bytes = std::span<const std::uint8_t>;
using Samples = std::vector<std::int16_t>;

std::int16_t Clamped(int sample) { return static_cast<std::int16_t>(std::clamp(sample, -32768, 32767)); }

// The prediction of one channel goes on from its last two samples; the step grows and shrinks with what was
// missing.
struct MicrosoftChannel {
    std::pair<int, int> coefficients;
    int step = 0;
    int last = 0, beforeLast = 0;

    std::int16_t Next(int code)
    {
        constexpr std::array kGrowth{230, 230, 230, 230, 307, 409, 512, 614,
                                     768, 614, 512, 409, 307, 230, 230, 230};
        constexpr int kSmallestStep = 16, kLargestStep = 1 << 20;
        const auto predicted = static_cast<int>(
            (std::int64_t{last} * coefficients.first + std::int64_t{beforeLast} * coefficients.second) >> 8);
        const int error = (code >= 8 ? code - 16 : code) * step;
        beforeLast = last;
        last = Clamped(predicted + error);
        step =
            std::clamp(kGrowth.at(static_cast<std::size_t>(code)) * step / 256, kSmallestStep, kLargestStep);
        return static_cast<std::int16_t>(last);
    }
};

bool DecodeMicrosoftBlock(Bytes block, const AdpcmFormat& format, Samples& samples)
{
    ByteCursor cursor(block);
    std::array<MicrosoftChannel, 2> channels;
    const std::span used(channels.data(), static_cast<std::size_t>(format.channels));
    for (MicrosoftChannel& channel : used) {
        const std::size_t predictor = cursor.U8();
        if (predictor >= format.coefficients.size())
            return false;
        channel.coefficients = format.coefficients[predictor];
    }
    for (MicrosoftChannel& channel : used)
        channel.step = cursor.I16();
    for (MicrosoftChannel& channel : used)
        channel.last = cursor.I16();
    for (MicrosoftChannel& channel : used)
        channel.beforeLast = cursor.I16();
    if (!cursor.Ok())
        return false;
    for (const MicrosoftChannel& channel : used)
        samples.push_back(static_cast<std::int16_t>(channel.beforeLast));
    for (const MicrosoftChannel& channel : used)
        samples.push_back(static_cast<std::int16_t>(channel.last));
    std::size_t next = 0;
    for (const std::uint8_t byte : cursor.Bytes(cursor.Left())) {
        for (const int code : {byte >> 4, byte & 15}) {
            samples.push_back(used[next].Next(code));
            next = (next + 1) % used.size();
        }
    }
    return true;
}

struct ImaChannel {
    int sample = 0;
    int index = 0; // into the steps

    std::int16_t Next(int code)
    {
        constexpr std::array kSteps{
            7,     8,     9,     10,    11,    12,    13,    14,    16,    17,    19,   21,    23,
            25,    28,    31,    34,    37,    41,    45,    50,    55,    60,    66,   73,    80,
            88,    97,    107,   118,   130,   143,   157,   173,   190,   209,   230,  253,   279,
            307,   337,   371,   408,   449,   494,   544,   598,   658,   724,   796,  876,   963,
            1060,  1166,  1282,  1411,  1552,  1707,  1878,  2066,  2272,  2499,  2749, 3024,  3327,
            3660,  4026,  4428,  4871,  5358,  5894,  6484,  7132,  7845,  8630,  9493, 10442, 11487,
            12635, 13899, 15289, 16818, 18500, 20350, 22385, 24623, 27086, 29794, 32767};
        constexpr std::array kIndexChange{-1, -1, -1, -1, 2, 4, 6, 8};
        const int step = kSteps.at(static_cast<std::size_t>(index));
        const int size = code & 7;
        int change = step >> 3;
        change += (size & 4) != 0 ? step : 0;
        change += (size & 2) != 0 ? step >> 1 : 0;
        change += (size & 1) != 0 ? step >> 2 : 0;
        sample = Clamped((code & 8) != 0 ? sample - change : sample + change);
        index = std::clamp(index + kIndexChange.at(static_cast<std::size_t>(size)), 0,
                           static_cast<int>(kSteps.size()) - 1);
        return static_cast<std::int16_t>(sample);
    }
};

// Behind the first sample of each channel the codes lie in groups of eight, one group a channel in turn.
bool DecodeImaBlock(Bytes block, const AdpcmFormat& format, Samples& samples)
{
    constexpr std::size_t kGroupBytes = 4, kGroupSamples = 8;
    constexpr int kLastStep = 88;
    ByteCursor cursor(block);
    std::array<ImaChannel, 2> channels;
    const std::span used(channels.data(), static_cast<std::size_t>(format.channels));
    for (ImaChannel& channel : used) {
        channel.sample = cursor.I16();
        channel.index = cursor.U8();
        cursor.U8();
        if (!cursor.Ok() || channel.index > kLastStep)
            return false;
    }
    for (const ImaChannel& channel : used)
        samples.push_back(static_cast<std::int16_t>(channel.sample));
    while (cursor.Left() >= kGroupBytes * used.size()) {
        const std::size_t start = samples.size();
        samples.resize(start + kGroupSamples * used.size());
        for (std::size_t channel = 0; channel < used.size(); ++channel) {
            std::size_t at = start + channel;
            for (const std::uint8_t byte : cursor.Bytes(kGroupBytes)) {
                for (const int code : {byte & 15, byte >> 4}) {
                    samples[at] = used[channel].Next(code);
                    at += used.size();
                }
            }
        }
    }
    return true;
}

template <typename DecodeBlock>
Samples Decode(Bytes data, const AdpcmFormat& format, std::size_t mostFrames, DecodeBlock decodeBlock)
{
    Samples samples;
    const std::size_t most = mostFrames * static_cast<std::size_t>(format.channels);
    while (!data.empty() && samples.size() < most) {
        const std::size_t size = std::min(format.blockSize, data.size());
        if (size == 0 || !decodeBlock(data.first(size), format, samples))
            break;
        data = data.subspan(size);
    }
    samples.resize(std::min(samples.size(), most));
    return samples;
}

} // namespace

Samples DecodeMicrosoftAdpcm(Bytes data, const AdpcmFormat& format, std::size_t mostFrames)
{
    return Decode(data, format, mostFrames, DecodeMicrosoftBlock);
}

Samples DecodeImaAdpcm(Bytes data, const AdpcmFormat& format, std::size_t mostFrames)
{
    return Decode(data, format, mostFrames, DecodeImaBlock);
}

} // namespace voxtrel::agent::speech
