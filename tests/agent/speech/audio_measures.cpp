#include "audio_measures.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>
#include <vector>

namespace voxtrel::agent::speech {
namespace {

constexpr int kRate = 16000;
constexpr std::ptrdiff_t kFrame = 640; // 40 ms
constexpr std::ptrdiff_t kHop = 320;
constexpr double kQuiet = 300;

double Power(std::span<const std::int16_t> frame)
{
    const double sum = std::accumulate(frame.begin(), frame.end(), 0.0,
                                       [](double total, double sample) { return total + sample * sample; });
    return sum / static_cast<double>(frame.size());
}

template <typename Function> void ForLoudFrames(std::span<const std::int16_t> samples, Function function)
{
    for (std::ptrdiff_t at = 0; at + 2 * kFrame <= std::ssize(samples); at += kHop) {
        const auto frame = samples.subspan(static_cast<std::size_t>(at), kFrame);
        if (std::sqrt(Power(frame)) > kQuiet)
            function(samples.subspan(static_cast<std::size_t>(at), 2 * kFrame));
    }
}

// Normalised cross-correlation of the first half of the frame with itself, lag samples later.
double Correlation(std::span<const std::int16_t> frame, std::ptrdiff_t lag)
{
    double product = 0, a = 0, b = 0;
    for (std::ptrdiff_t i = 0; i < kFrame; i += 2) {
        const double x = frame[static_cast<std::size_t>(i)], y = frame[static_cast<std::size_t>(i + lag)];
        product += x * y;
        a += x * x;
        b += y * y;
    }
    return product / std::sqrt(a * b + 1);
}

} // namespace

double Loudness(std::span<const std::int16_t> samples)
{
    double sum = 0;
    int frames = 0;
    ForLoudFrames(samples, [&](std::span<const std::int16_t> frame) {
        sum += Power(frame.first(kFrame));
        ++frames;
    });
    return frames > 0 ? std::sqrt(sum / frames) : 0;
}

PitchMeasure MeasurePitch(std::span<const std::int16_t> samples)
{
    std::vector<double> pitches;
    int frames = 0;
    ForLoudFrames(samples, [&](std::span<const std::int16_t> frame) {
        ++frames;
        std::vector<double> correlations;
        for (std::ptrdiff_t lag = 0; lag <= kRate / 45; ++lag)
            correlations.push_back(lag < kRate / 500 ? 0 : Correlation(frame, lag));
        const double best = *std::max_element(correlations.begin(), correlations.end());
        if (best < 0.75)
            return;
        // Of the peaks nearly as good as the best, the shortest period is the true one.
        for (std::size_t lag = kRate / 500; lag + 1 < correlations.size(); ++lag) {
            if (correlations[lag] > 0.9 * best && correlations[lag] >= correlations[lag - 1] &&
                correlations[lag] >= correlations[lag + 1]) {
                pitches.push_back(static_cast<double>(kRate) / static_cast<double>(lag));
                break;
            }
        }
    });
    if (pitches.empty())
        return {};
    std::sort(pitches.begin(), pitches.end());
    const auto at = [&](double share) {
        return pitches[static_cast<std::size_t>(share * static_cast<double>(pitches.size() - 1))];
    };
    return {at(0.5), at(0.9) - at(0.1), static_cast<double>(pitches.size()) / frames};
}

double SpectralCentroid(std::span<const std::int16_t> samples)
{
    constexpr int kBands = 128;
    std::vector<double> power(kBands, 0.0);
    int frame = 0;
    ForLoudFrames(samples, [&](std::span<const std::int16_t> piece) {
        if (frame++ % 4 != 0)
            return;
        for (int band = 1; band < kBands; ++band) {
            const double step = std::numbers::pi * band / kBands;
            std::complex<double> sum = 0;
            for (int i = 0; i < kFrame; ++i)
                sum += static_cast<double>(piece[static_cast<std::size_t>(i)]) *
                       (0.5 - 0.5 * std::cos(2 * std::numbers::pi * i / kFrame)) * std::polar(1.0, step * i);
            power[static_cast<std::size_t>(band)] += std::abs(sum);
        }
    });
    double weighted = 0, total = 0;
    for (int band = 1; band < kBands; ++band) {
        weighted += power[static_cast<std::size_t>(band)] * band * kRate / 2 / kBands;
        total += power[static_cast<std::size_t>(band)];
    }
    return total > 0 ? weighted / total : 0;
}

std::int64_t LongestSilence(std::span<const std::int16_t> samples, int level)
{
    std::int64_t longest = 0, current = 0;
    for (const std::int16_t sample : samples) {
        current = std::abs(int{sample}) <= level ? current + 1 : 0;
        longest = std::max(longest, current);
    }
    return longest;
}

} // namespace voxtrel::agent::speech
