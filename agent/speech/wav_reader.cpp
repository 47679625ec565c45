#include "agent/speech/wav_reader.h"

#include "agent/acs/byte_cursor.h"
#include "agent/speech/resampler.h"
#include "agent/speech/synthesizer.h"

#include <algorithm>
#include <optional>

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

constexpr std::uint16_t kPlainSamples = 1;
constexpr int kMostChannels = 8;
constexpr std::uint32_t kLowestRate = 4000, kHighestRate = 64000; // what the resampler can turn into ours
constexpr std::size_t kLongest = 60;                              // seconds

struct Format {
    int channels = 0;
    std::uint32_t rate = 0;
    int bytes = 0; // of a sample
};

std::optional<Format> ReadFormat(Bytes chunk)
{
    ByteCursor cursor(chunk);
    const std::uint16_t coding = cursor.U16();
    Format format;
    format.channels = cursor.U16();
    format.rate = cursor.U32();
    cursor.U32(); // bytes a second, which follow from the rest
    cursor.U16(); // and so do the bytes of all channels together
    const std::uint16_t bits = cursor.U16();
    format.bytes = bits / 8;
    const bool known = coding == kPlainSamples && (bits == 8 || bits == 16) && format.channels >= 1 &&
                       format.channels <= kMostChannels && format.rate >= kLowestRate &&
                       format.rate <= kHighestRate;
    if (!cursor.Ok() || !known)
        return std::nullopt;
    return format;
}

// Samples of 8 bits have their zero in the middle.
int Sample(const std::uint8_t* at, int bytes)
{
    if (bytes == 1)
        return (*at - 128) * 256;
    return static_cast<std::int16_t>(at[0] | at[1] << 8);
}

std::vector<std::int16_t> OneChannel(Bytes data, const Format& format)
{
    const auto step = static_cast<std::size_t>(format.channels) * static_cast<std::size_t>(format.bytes);
    std::vector<std::int16_t> samples(std::min(data.size() / step, kLongest * format.rate));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        int sum = 0;
        for (int channel = 0; channel < format.channels; ++channel)
            sum += Sample(data.data() + i * step + static_cast<std::size_t>(channel * format.bytes),
                          format.bytes);
        samples[i] = static_cast<std::int16_t>(sum / format.channels);
    }
    return samples;
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
    while (cursor.Left() >= 8) {
        const std::uint32_t tag = cursor.U32();
        const std::uint32_t size = cursor.U32();
        const Bytes chunk =
            cursor.Bytes(std::min<std::size_t>(size, cursor.Left())); // the last may claim too much
        if (size % 2 != 0)
            cursor.Bytes(std::min<std::size_t>(1, cursor.Left()));
        if (tag == Tag("fmt "))
            format = ReadFormat(chunk);
        else if (tag == Tag("data"))
            return format ? AtOurRate(OneChannel(chunk, *format), format->rate) : std::vector<std::int16_t>{};
    }
    return {};
}

} // namespace voxtrel::agent::speech
