#pragma once

#include <espeak-ng/speak_lib.h>

#include <mutex>

namespace voxtrel::agent::voices {

// The eSpeak NG library, loaded when it is first asked for; the program does not need it to start. It keeps
// global state: whoever calls it holds the turn.
class EspeakLibrary {
public:
    // Null when it is not installed, or not whole.
    static EspeakLibrary* Instance();

    std::timed_mutex& Turn() { return turn_; }
    int SampleRate() const { return sampleRate_; }

    decltype(&espeak_SetSynthCallback) SetSynthCallback = nullptr;
    decltype(&espeak_Synth) Synth = nullptr;
    decltype(&espeak_SetParameter) SetParameter = nullptr;
    decltype(&espeak_GetParameter) GetParameter = nullptr;
    decltype(&espeak_ListVoices) ListVoices = nullptr;
    decltype(&espeak_SetVoiceByName) SetVoiceByName = nullptr;

private:
    EspeakLibrary() = default;
    bool Load();

    std::timed_mutex turn_;
    int sampleRate_ = 0;
};

} // namespace voxtrel::agent::voices
