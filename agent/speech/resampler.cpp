#include "agent/speech/resampler.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace voxtrel::agent::speech {

namespace {

constexpr int kTaps = 24; // even
constexpr int kHalf = kTaps / 2;
constexpr int kPhases = 64;

// Blackman window over -1..1.
double Window(double x)
{
    if (std::abs(x) >= 1)
        return 0;
    const double angle = std::numbers::pi * x;
    return 0.42 + 0.5 * std::cos(angle) + 0.08 * std::cos(2 * angle);
}

double Sinc(double x) { return x == 0 ? 1 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x); }

} // namespace

Resampler::Resampler(double factor) : factor_(factor), position_(kHalf), history_(kHalf, 0.0F)
{
    // Going faster would fold high tones back: they are cut off first.
    const double cutoff = 0.95 * std::min(1.0, 1.0 / factor);
    kernel_.resize(static_cast<std::size_t>(kPhases + 1) * kTaps);
    for (int phase = 0; phase <= kPhases; ++phase) {
        double sum = 0;
        float* row = &kernel_[static_cast<std::size_t>(phase) * kTaps];
        for (int tap = 0; tap < kTaps; ++tap) {
            const double x = tap - (kHalf - 1) - static_cast<double>(phase) / kPhases;
            row[tap] = static_cast<float>(cutoff * Sinc(cutoff * x) * Window(x / kHalf));
            sum += row[tap];
        }
        for (int tap = 0; tap < kTaps; ++tap)
            row[tap] = static_cast<float>(row[tap] / sum);
    }
}

void Resampler::Process(std::span<const std::int16_t> in, std::vector<std::int16_t>& out)
{
    history_.insert(history_.end(), in.begin(), in.end());
    Drain(out, static_cast<double>(history_.size()) - kHalf);
    const auto used = static_cast<std::ptrdiff_t>(std::max(0.0, std::floor(position_) - kHalf));
    history_.erase(history_.begin(), history_.begin() + std::min(used, std::ssize(history_)));
    position_ -= static_cast<double>(used);
}

void Resampler::Finish(std::vector<std::int16_t>& out)
{
    const double end = static_cast<double>(history_.size());
    history_.insert(history_.end(), kTaps, 0.0F);
    Drain(out, end);
}

void Resampler::Drain(std::vector<std::int16_t>& out, double end)
{
    for (; position_ < end; position_ += factor_) {
        const auto whole = static_cast<std::size_t>(position_);
        const auto phase = static_cast<std::size_t>((position_ - static_cast<double>(whole)) * kPhases + 0.5);
        const float* row = &kernel_[phase * kTaps];
        const float* from = &history_[whole - (kHalf - 1)];
        float sum = 0;
        for (int tap = 0; tap < kTaps; ++tap)
            sum += row[tap] * from[tap];
        out.push_back(static_cast<std::int16_t>(std::clamp(std::lround(sum), -32768L, 32767L)));
    }
}

} // namespace voxtrel::agent::speech
