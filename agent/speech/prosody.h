#pragma once

#include <algorithm>

namespace voxtrel::agent::speech {

enum class VoiceStyle { Normal, Whisper, Monotone };

// How abbreviations and symbols are read.
enum class ReadingContext { Unknown, Address, EMail };

// The ranges of the tags; a value outside is moved to the nearest limit.
inline constexpr int kMinPitch = 50, kMaxPitch = 400;
inline constexpr int kMinSpeed = 50, kMaxSpeed = 250;
inline constexpr int kMinVolume = 0, kMaxVolume = 65535;
inline constexpr int kMinPauseMs = 10, kMaxPauseMs = 2550;

// How the voice speaks from some point on. The defaults are the voice's own pitch and rate at a comfortable
// loudness: the numbers are relative to them, whatever the voice.
struct Prosody {
    int pitch = 150;
    int speed = 150;
    int volume = 30000; // linear amplitude
    VoiceStyle style = VoiceStyle::Normal;
    ReadingContext context = ReadingContext::Unknown;

    double PitchFactor() const { return pitch / 150.0; }
    double SpeedFactor() const { return speed / 150.0; }
    double Gain() const { return volume / 30000.0; }

    friend bool operator==(const Prosody&, const Prosody&) = default;
};

} // namespace voxtrel::agent::speech
