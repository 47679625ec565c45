#pragma once

#include <span>
#include <string_view>

namespace voxtrel::agent::speech {

struct SystemVoice;
struct VoiceFamily;

// The recordings that the voices are made from.
enum class VoiceBase { Kal, Awb, Rms, Slt };

// A voice as users choose it: a base voice with a pitch, a rate and a build of its own, or a voice of the
// system.
struct Voice {
    std::wstring_view modeId; // the engine mode identifier, in braces
    std::wstring_view name;
    bool female = false;
    VoiceBase base = VoiceBase::Rms;
    double pitchHz = 100;      // mean
    double pitchSpreadHz = 20; // standard deviation: how lively the melody is
    double stretch = 1;        // of durations; above 1 is slower
    double tract = 1;          // resonances are moved up by this factor; below 1 is a larger body
    double gain = 1;           // evens out the loudness of the voices

    // Both null for the built-in voices. The base of a voice of the system means nothing.
    const SystemVoice* system = nullptr;
    const VoiceFamily* family = nullptr;
};

// The built-in voices, the usual one first.
std::span<const Voice> AllVoices();

// The built-in voice that speaks where a voice of the system cannot.
const Voice& StandInFor(const Voice& voice);

// The amplitude below which a voice, before its gain, makes no sound of speech.
int AudibleLevel(const Voice& voice);

// The built-in voice of an engine mode identifier, compared without regard to case; null if there is none.
const Voice* FindVoice(std::wstring_view modeId);

} // namespace voxtrel::agent::speech
