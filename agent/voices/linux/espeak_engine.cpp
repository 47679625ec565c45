#include "agent/voices/linux/espeak_engine.h"

#include "agent/acs/unicode.h"
#include "agent/speech/phrase_timeline.h"
#include "agent/speech/text_characters.h"
#include "agent/voices/linux/espeak_library.h"
#include "agent/voices/phrase_markup.h"
#include "agent/voices/system_voices.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace voxtrel::agent::voices {

namespace {

using namespace speech;

constexpr std::wstring_view kEngine = L"eSpeak NG";
constexpr double kGain = 0.95; // by measure
constexpr std::chrono::seconds kTurnComesWithin{2};

constexpr int kLowestPitch = 0, kHighestPitch = 99;

std::wstring Trimmed(std::wstring text)
{
    text.erase(text.find_last_not_of(L' ') + 1);
    return text;
}

// "gmw/en-GB-x-rp" is "en-GB-x-rp": the folders have changed from version to version.
std::string KeyOf(const espeak_VOICE& voice)
{
    const std::string identifier = voice.identifier;
    return identifier.substr(identifier.rfind('/') + 1);
}

// Variants change the tone of a language's voice, and other families need programs of their own.
bool IsLanguage(const espeak_VOICE& voice)
{
    const std::string_view identifier = voice.identifier;
    return !identifier.starts_with("!v") && !identifier.starts_with("mb/") && voice.languages &&
           voice.languages[0] != 0;
}

std::vector<SystemVoice> ListEspeakVoices()
{
    std::vector<SystemVoice> voices;
    EspeakLibrary* library = EspeakLibrary::Instance();
    if (!library)
        return voices;
    const std::unique_lock turn(library->Turn(), kTurnComesWithin);
    if (!turn.owns_lock())
        return voices;
    for (const espeak_VOICE** listed = library->ListVoices(nullptr); listed && *listed; ++listed) {
        const espeak_VOICE& voice = **listed;
        if (!IsLanguage(voice))
            continue;
        const std::wstring key = acs::WideFromUtf8(KeyOf(voice));
        voices.push_back(
            {.modeId = VoiceModeId(kEspeakCode, key),
             .displayName = Trimmed(acs::WideFromUtf8(voice.name)) + L", " + std::wstring(kEngine),
             .engine = std::wstring(kEngine),
             .language = acs::WideFromUtf8(voice.languages + 1), // a byte of priority comes first
             .female = voice.gender == 2,
             .key = key});
    }
    return voices;
}

// One phrase on its way through the library, which calls back without saying for whom.
class Synthesis {
public:
    Synthesis(const PhraseMarkup& markup, int sampleRate, EngineSink& sink)
        : markup_(markup), sampleRate_(sampleRate), sink_(sink)
    {
        current = this;
    }
    ~Synthesis() { current = nullptr; }
    Synthesis(const Synthesis&) = delete;
    Synthesis& operator=(const Synthesis&) = delete;

    static int Receive(short* samples, int count, espeak_EVENT* events)
    {
        return current && current->Take(samples, count, events) ? 0 : 1;
    }

private:
    bool Take(const short* samples, int count, const espeak_EVENT* events)
    {
        bool goOn = true;
        for (; goOn && events->type != espeakEVENT_LIST_TERMINATED; ++events)
            goOn = Report(*events);
        if (goOn && samples && count > 0)
            goOn = sink_.Samples({samples, static_cast<std::size_t>(count)});
        return goOn;
    }

    bool Report(const espeak_EVENT& event)
    {
        const std::int64_t sample = std::int64_t{event.audio_position} * sampleRate_ / 1000;
        if (event.type == espeakEVENT_WORD && event.text_position > 0)
            return sink_.Word(
                sample, WordAtOffset(markup_.offsets, static_cast<std::size_t>(event.text_position - 1)));
        if (event.type == espeakEVENT_PHONEME)
            return sink_.Mouth(sample, MouthOfPhoneme(event.id.string));
        return true;
    }

    // The name fills its eight bytes or ends with a zero.
    static acs::Mouth MouthOfPhoneme(const char (&name)[8])
    {
        const char* end = std::find(std::begin(name), std::end(name), '\0');
        const std::wstring sounds = acs::WideFromUtf8({name, static_cast<std::size_t>(end - name)});
        if (sounds.empty() || sounds[0] == L'_')
            return acs::Mouth::Closed;
        return MouthOfSound(CodePointAt(sounds, 0).value);
    }

    static inline Synthesis* current = nullptr; // of whoever has the turn

    const PhraseMarkup& markup_;
    int sampleRate_;
    EngineSink& sink_;
};

class EspeakEngine : public VoiceEngine {
public:
    bool Speak(const SystemVoice& voice, const Phrase& phrase, EngineSink& sink) override
    {
        EspeakLibrary* library = EspeakLibrary::Instance();
        if (!library)
            return false;
        const std::unique_lock turn(library->Turn(), kTurnComesWithin);
        if (!turn.owns_lock() || !Choose(*library, voice, phrase.prosody))
            return false;
        if (!sink.Begin(library->SampleRate()))
            return true;
        const PhraseMarkup markup = HasEmphasis(phrase) ? EmphasizedMarkup(phrase) : PlainMarkup(phrase);
        Synthesis synthesis(markup, library->SampleRate(), sink);
        library->SetSynthCallback(&Synthesis::Receive);
        const unsigned flags = espeakCHARS_UTF8 | (markup.isXml ? espeakSSML : 0);
        return library->Synth(markup.text.c_str(), markup.text.size() + 1, 0, POS_CHARACTER, 0, flags,
                              nullptr, nullptr) == EE_OK;
    }

private:
    // The voice brings its own settings along: they are changed after it.
    static bool Choose(EspeakLibrary& library, const SystemVoice& voice, const Prosody& prosody)
    {
        const std::string name = acs::Utf8FromWide(voice.key);
        const bool whispers = prosody.style == VoiceStyle::Whisper &&
                              library.SetVoiceByName((name + "+whisper").c_str()) == EE_OK;
        if (!whispers && library.SetVoiceByName(name.c_str()) != EE_OK)
            return false;
        const int pitch = static_cast<int>(
            std::lround(library.GetParameter(espeakPITCH, 0) + 50 * std::log2(prosody.PitchFactor())));
        library.SetParameter(espeakPITCH, std::clamp(pitch, kLowestPitch, kHighestPitch), 0);
        const int rate = static_cast<int>(std::lround(espeakRATE_NORMAL * prosody.SpeedFactor()));
        library.SetParameter(espeakRATE, std::clamp(rate, espeakRATE_MINIMUM, espeakRATE_MAXIMUM), 0);
        const bool flat = prosody.style == VoiceStyle::Monotone;
        library.SetParameter(espeakRANGE, flat ? 0 : library.GetParameter(espeakRANGE, 0), 0);
        return true;
    }

    static bool HasEmphasis(const Phrase& phrase)
    {
        return std::any_of(phrase.words.begin(), phrase.words.end(),
                           [](const PhraseWord& word) { return word.emphasized; });
    }
};

} // namespace

VoiceFamily EspeakFamily()
{
    return {.code = kEspeakCode,
            .name = std::wstring(kEngine),
            .list = ListEspeakVoices,
            .makeEngine = [] { return std::make_unique<EspeakEngine>(); },
            .gain = kGain};
}

} // namespace voxtrel::agent::voices
