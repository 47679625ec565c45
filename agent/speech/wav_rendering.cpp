#include "agent/speech/engine_synthesizer.h"
#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/speech_factory.h"
#include "agent/speech/utterance_renderer.h"
#include "agent/speech/voice_catalogue.h"
#include "agent/speech/wav_writer.h"

namespace voxtrel::agent::speech {

namespace {

constexpr std::chrono::seconds kEnginesAnswerWithin{8}; // a speech service may have to be started

class WavSink : public UtteranceSink {
public:
    explicit WavSink(std::ostream& out) : writer_(out) {}

    bool Samples(std::span<const std::int16_t> samples) override
    {
        good_ = good_ && writer_.Write(samples);
        return good_;
    }
    void Event(std::int64_t, SpeechEvent) override {}

    bool Finish() { return writer_.UpdateHeader() && good_; }

private:
    WavWriter writer_;
    bool good_ = true;
};

} // namespace

Result RenderToWav(std::wstring_view markup, std::wstring_view modeId, std::ostream& out,
                   const std::function<bool(double)>& progress, const SpeechMessages& messages,
                   VoiceCatalogue* systemVoices)
{
    const Voice* voice = modeId.empty() ? &AllVoices().front()
                         : systemVoices ? systemVoices->Find(modeId, kEnginesAnswerWithin)
                                        : FindVoice(modeId);
    if (!voice || IsUnchecked(*voice))
        return Result::Failure(ErrorCode::VoiceNotAvailable, messages.voiceNotAvailable);
    if (voice->system && !voice->family->makeEngine)
        return Result::Failure(ErrorCode::VoiceNotAvailable, messages.voicePlaysOnly);
    EngineSynthesizer synthesizer(std::make_unique<FliteSynthesizer>());
    WavSink sink(out);
    UtteranceRenderer renderer(markup, *voice, synthesizer, sink);
    const auto size = static_cast<double>(markup.size());
    bool wanted = true;
    while (wanted && renderer.RenderClause())
        wanted = !progress || progress(static_cast<double>(renderer.Position()) / size);
    if (!sink.Finish())
        return Result::Failure(ErrorCode::AudioNotAccessible, messages.soundNotWritten);
    if (progress && wanted)
        static_cast<void>(progress(1));
    return Result::Success();
}

std::vector<VoiceDescription> ListVoices(VoiceCatalogue* systemVoices)
{
    std::vector<VoiceDescription> voices;
    for (const Voice& voice : AllVoices())
        voices.push_back({std::wstring(voice.modeId), std::wstring(voice.name), voice.female, L"built in",
                          L"en-US", true});
    if (!systemVoices)
        return voices;
    for (const SystemVoice& voice : systemVoices->All(kEnginesAnswerWithin))
        voices.push_back({voice.modeId, voice.displayName, voice.female, voice.engine, voice.language});
    return voices;
}

} // namespace voxtrel::agent::speech
