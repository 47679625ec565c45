#pragma once

#include <cstdint>
#include <span>

// What a listener would notice of speech at 16,000 samples a second, as figures.
namespace voxtrel::agent::speech {

// Root mean square of the parts that are not silent.
double Loudness(std::span<const std::int16_t> samples);

// The middle, and the spread from the 10th to the 90th percentile, of the fundamental frequency in Hz, and
// the share of audible frames that have one.
struct PitchMeasure {
    double median = 0;
    double spread = 0;
    double voiced = 0;
};
PitchMeasure MeasurePitch(std::span<const std::int16_t> samples);

// The centre of the spectrum of voiced and loud frames, in Hz.
double SpectralCentroid(std::span<const std::int16_t> samples);

// The longest stretch in which no sample exceeds the level.
std::int64_t LongestSilence(std::span<const std::int16_t> samples, int level);

} // namespace voxtrel::agent::speech
