#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace voxtrel::agent::speech {

// Plays samples faster or slower by a constant factor, in pieces of any length: band-limited interpolation
// with a windowed sinc. The output keeps step with the input: output sample n is input time n * factor.
class Resampler {
public:
    // factor above 1 gives fewer samples; 0.25..4.
    explicit Resampler(double factor);

    // Appends to out what can be computed from the input so far.
    void Process(std::span<const std::int16_t> in, std::vector<std::int16_t>& out);

    // Appends the rest, as if silence followed.
    void Finish(std::vector<std::int16_t>& out);

private:
    void Drain(std::vector<std::int16_t>& out, double end);

    double factor_;
    double position_ = 0; // of the next output sample, in input samples from the start of history_
    std::vector<float> history_;
    std::vector<float> kernel_; // kPhases + 1 rows of taps
};

} // namespace voxtrel::agent::speech
