#include "tools/acsc/sound_source.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <string_view>
#include <utility>

namespace voxtrel::acsc {

namespace {

constexpr int kRate = 16000; // samples a second
constexpr int kSamplesPerHundredth = kRate / 100;
constexpr int kLongestSound = 600;                        // hundredths
constexpr double kLowestPitch = 20, kHighestPitch = 7000; // hertz
constexpr double kLoudest = 0.9;                          // of the full range, so that players need not clip
constexpr double kTurn = 2 * std::numbers::pi;

// One vibration among those that sound together when something is struck or blown.
struct Partial {
    double ratio;  // of the pitch
    double volume; // of the tone's
    double decay;  // how often it falls to a thousandth over the length of the tone
};

constexpr std::array<Partial, 1> kSoft{{{1, 1, 0}}};
constexpr std::array<Partial, 5> kReed{{{1, 0.6, 0}, {2, 0.28, 0}, {3, 0.24, 0}, {4, 0.1, 0}, {5, 0.08, 0}}};
constexpr std::array<Partial, 4> kBell{{{1, 0.6, 1}, {2.76, 0.3, 1.6}, {5.4, 0.16, 2.6}, {2, 0.1, 1.2}}};
constexpr std::array<Partial, 3> kWood{{{1, 0.8, 1.2}, {3.93, 0.35, 3}, {9.2, 0.12, 6}}};

constexpr std::pair<std::string_view, Timbre> kTimbres[] = {{"soft", Timbre::Soft},
                                                            {"reed", Timbre::Reed},
                                                            {"bell", Timbre::Bell},
                                                            {"wood", Timbre::Wood},
                                                            {"noise", Timbre::Noise}};

double Pitch(WordReader& words)
{
    const double pitch = words.Number("a pitch in hertz");
    if (pitch < kLowestPitch || pitch > kHighestPitch)
        words.Fail("a pitch lies between 20 and 7000 hertz");
    return pitch;
}

Tone ParseTone(const Statement& line)
{
    WordReader words(line);
    if (line.hasBlock)
        words.Fail("no block belongs here");
    const std::string kind = words.Name("soft, reed, bell, wood or noise");
    const auto* const found = std::find_if(std::begin(kTimbres), std::end(kTimbres),
                                           [&](const auto& timbre) { return timbre.first == kind; });
    if (found == std::end(kTimbres))
        words.Fail("a tone is soft, reed, bell, wood or noise");
    Tone tone;
    tone.timbre = found->second;
    tone.from = tone.to = Pitch(words);
    while (!words.AtEnd()) {
        if (words.Accept("to"))
            tone.to = Pitch(words);
        else if (words.Accept("at"))
            tone.start = words.Integer("the start", 0, kLongestSound);
        else if (words.Accept("length"))
            tone.length = words.Integer("the length", 1, kLongestSound);
        else if (words.Accept("volume"))
            tone.volume = std::clamp(words.Number("the volume"), 0.0, 1.0);
        else
            words.Finish();
    }
    if (tone.start + tone.length > kLongestSound)
        words.Fail("a sound lasts six seconds at most");
    return tone;
}

// How loud a blown tone is, part of the way (0..1) through it: it swells and fades.
double Swell(double way, double rise)
{
    const double edge = way < rise ? way / rise : (1 - way) / (1 - rise);
    return 0.5 - 0.5 * std::cos(std::numbers::pi * std::clamp(edge, 0.0, 1.0));
}

// Struck at once, but over half a hundredth, which keeps it from clicking; and silent at the end.
double Strike(double way, double seconds) { return std::min({1.0, seconds / 0.005, (1 - way) * 20}); }

// Adds the tone to the samples from its start on.
class ToneRenderer {
public:
    ToneRenderer(const Tone& tone, std::vector<double>& samples) : tone_(tone), samples_(samples) {}

    void Render()
    {
        switch (tone_.timbre) {
        case Timbre::Soft:
            return Add(kSoft);
        case Timbre::Reed:
            return Add(kReed);
        case Timbre::Bell:
            return Add(kBell);
        case Timbre::Wood:
            return Add(kWood);
        case Timbre::Noise:
            return AddNoise();
        }
    }

private:
    std::size_t Length() const { return static_cast<std::size_t>(tone_.length) * kSamplesPerHundredth; }

    double& Sample(std::size_t i)
    {
        return samples_[static_cast<std::size_t>(tone_.start) * kSamplesPerHundredth + i];
    }

    // Equal steps in music are equal ratios.
    double PitchAt(double way) const { return tone_.from * std::pow(tone_.to / tone_.from, way); }

    template <std::size_t N> void Add(const std::array<Partial, N>& partials)
    {
        const bool struck = partials[0].decay > 0;
        double phase = 0; // of the tone itself, in turns
        for (std::size_t i = 0; i < Length(); ++i) {
            const double way = static_cast<double>(i) / static_cast<double>(Length());
            const double seconds = static_cast<double>(i) / kRate;
            const double tremble =
                tone_.timbre == Timbre::Reed ? 1 + 0.006 * std::sin(kTurn * 5.5 * seconds) : 1;
            const double pitch = PitchAt(way) * tremble;
            phase += pitch / kRate;
            double sum = 0;
            for (const Partial& partial : partials) {
                if (pitch * partial.ratio < kRate / 2.2) // the rest would come back as other pitches
                    sum += partial.volume * std::sin(kTurn * phase * partial.ratio) *
                           std::pow(0.001, partial.decay * way);
            }
            Sample(i) += tone_.volume * sum * (struck ? Strike(way, seconds) : Swell(way, 0.15));
        }
    }

    // White noise through a resonance at the pitch.
    void AddNoise()
    {
        constexpr double kDamping = 0.6;
        double low = 0, band = 0;
        std::uint32_t state = 0x2545F491;
        for (std::size_t i = 0; i < Length(); ++i) {
            const double way = static_cast<double>(i) / static_cast<double>(Length());
            state = state * 1664525 + 1013904223;
            const double white = static_cast<double>(state >> 8) / (1 << 23) - 1;
            const double tuning = 2 * std::sin(std::numbers::pi * std::min(PitchAt(way), 2600.0) / kRate);
            low += tuning * band;
            band += tuning * (white - low - kDamping * band);
            Sample(i) += tone_.volume * band * Swell(way, 0.3);
        }
    }

    const Tone& tone_;
    std::vector<double>& samples_;
};

class ByteWriter {
public:
    void Text(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }

    void Number(std::uint32_t value, int size)
    {
        for (int i = 0; i < size; ++i)
            bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }

    std::vector<std::uint8_t> Take() { return std::move(bytes_); }

private:
    std::vector<std::uint8_t> bytes_;
};

std::vector<std::uint8_t> WaveFile(const std::vector<double>& samples, double gain)
{
    const auto dataBytes = static_cast<std::uint32_t>(samples.size() * 2);
    ByteWriter out;
    out.Text("RIFF");
    out.Number(36 + dataBytes, 4);
    out.Text("WAVEfmt ");
    out.Number(16, 4);
    out.Number(1, 2); // plain samples
    out.Number(1, 2); // one channel
    out.Number(kRate, 4);
    out.Number(kRate * 2, 4);
    out.Number(2, 2);
    out.Number(16, 2);
    out.Text("data");
    out.Number(dataBytes, 4);
    for (const double sample : samples)
        out.Number(static_cast<std::uint32_t>(std::lround(sample * gain * 32767)), 2);
    return out.Take();
}

} // namespace

SoundSource ParseSound(const Statement& statement)
{
    WordReader words(statement);
    words.Accept("sound");
    SoundSource sound;
    sound.name = words.Name("the name of the sound");
    words.Finish();
    for (const Statement& line : statement.block)
        sound.tones.push_back(ParseTone(line));
    if (sound.tones.empty())
        words.Fail("the sound '" + sound.name + "' has no tones");
    return sound;
}

std::vector<std::uint8_t> RenderSound(const SoundSource& sound)
{
    int length = 0;
    for (const Tone& tone : sound.tones)
        length = std::max(length, tone.start + tone.length);
    std::vector<double> samples(static_cast<std::size_t>(length) * kSamplesPerHundredth);
    for (const Tone& tone : sound.tones)
        ToneRenderer(tone, samples).Render();
    double peak = 0;
    for (const double sample : samples)
        peak = std::max(peak, std::abs(sample));
    return WaveFile(samples, peak > kLoudest ? kLoudest / peak : 1);
}

} // namespace voxtrel::acsc
