#pragma once

#include "agent/result.h"
#include "agent/speech/speech_engine.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::speech {

class VoiceCatalogue;

// What the user may be told, in the user's language.
struct SpeechMessages {
    std::wstring voiceNotAvailable = L"The chosen voice is not available on this computer.";
    std::wstring soundNotWritten = L"The sound could not be written.";
    std::wstring voicePlaysOnly =
        L"The speech service of the system plays this voice by itself: it cannot be written to a file.";
};

struct SpeechEngineOptions {
    enum class Output {
        Auto,   // the sound device; without one, as Silent
        Silent, // nothing is heard, but everything happens at its time
    };
    Output output = Output::Auto;

    // Where all that is spoken is written as a WAV file, too; empty for nowhere. The file is valid at any
    // moment.
    std::filesystem::path record = {};

    // The engine mode identifier to begin with; empty or unknown for the usual voice.
    std::wstring mode = {};

    // The voices of the system; null for the built-in ones alone.
    std::shared_ptr<VoiceCatalogue> systemVoices = {};

    // Whether bars in a text separate alternatives of which one is spoken.
    bool alternatives = false;

    // Called from another thread when there are events to take, so that nobody has to poll; may be empty.
    std::function<void()> wake = {};

    SpeechMessages messages = {};
};

// Never fails: without a sound device the engine is silent.
std::unique_ptr<SpeechEngine> MakeSpeechEngine(SpeechEngineOptions options = {});

// Speaks the markup into a WAV stream as fast as the machine can. progress is told from time to time how much
// is done, 0..1, and stops the work by returning false; may be empty. A stopped stream is a valid, shorter
// one.
Result RenderToWav(std::wstring_view markup, std::wstring_view modeId, std::ostream& out,
                   const std::function<bool(double)>& progress = {}, const SpeechMessages& messages = {},
                   VoiceCatalogue* systemVoices = nullptr);

struct VoiceDescription {
    std::wstring modeId;
    std::wstring name;
    bool female = false;
    std::wstring engine = {};   // "eSpeak NG"
    std::wstring language = {}; // a language tag; empty if it is not known
    bool isBuiltIn = false;
};

// The voices of this machine, the usual one first. Waits for slow engines, some seconds at most.
std::vector<VoiceDescription> ListVoices(VoiceCatalogue* systemVoices = nullptr);

} // namespace voxtrel::agent::speech
