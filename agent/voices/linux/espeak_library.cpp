#include "agent/voices/linux/espeak_library.h"

#include <dlfcn.h>

namespace voxtrel::agent::voices {

namespace {

constexpr const char* kLibrary = "libespeak-ng.so.1";
constexpr int kDoNotExit = 0x8000; // when its data is missing
constexpr int kBlockMs = 50;

template <typename Function> bool Resolve(void* library, const char* name, Function*& function)
{
    function = reinterpret_cast<Function*>(dlsym(library, name));
    return function != nullptr;
}

} // namespace

EspeakLibrary* EspeakLibrary::Instance()
{
    // Never destroyed: a call that hangs may still be in it when the program ends.
    static EspeakLibrary* const library = [] {
        auto* made = new EspeakLibrary;
        if (made->Load())
            return made;
        delete made;
        return static_cast<EspeakLibrary*>(nullptr);
    }();
    return library;
}

bool EspeakLibrary::Load()
{
    void* library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return false;
    decltype(&espeak_Initialize) initialize = nullptr;
    if (!Resolve(library, "espeak_Initialize", initialize) ||
        !Resolve(library, "espeak_SetSynthCallback", SetSynthCallback) ||
        !Resolve(library, "espeak_Synth", Synth) || !Resolve(library, "espeak_SetParameter", SetParameter) ||
        !Resolve(library, "espeak_GetParameter", GetParameter) ||
        !Resolve(library, "espeak_ListVoices", ListVoices) ||
        !Resolve(library, "espeak_SetVoiceByName", SetVoiceByName))
        return false;
    sampleRate_ = initialize(AUDIO_OUTPUT_SYNCHRONOUS, kBlockMs, nullptr,
                             espeakINITIALIZE_PHONEME_EVENTS | espeakINITIALIZE_PHONEME_IPA | kDoNotExit);
    return sampleRate_ > 0;
}

} // namespace voxtrel::agent::voices
