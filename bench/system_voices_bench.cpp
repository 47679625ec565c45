// How quickly a voice of the system begins to speak, beside its own library on the same words.

#include "agent/speech/embedded_engine.h"
#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/speech_factory.h"
#include "agent/speech/utterance_renderer.h"
#include "agent/speech/voice_catalogue.h"
#include "agent/voices/linux/espeak_engine.h"
#include "agent/voices/linux/espeak_library.h"
#include "agent/voices/system_voices.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace voxtrel::agent::voices {
namespace {

using namespace speech;

constexpr wchar_t kTenWords[] = L"Als der Regen vorbei war, gingen sie zur\u00FCck in die Stadt. ";
constexpr char kTenWordsUtf8[] = "Als der Regen vorbei war, gingen sie zur\xC3\xBC"
                                 "ck in die Stadt.";
constexpr char kFirstClauseUtf8[] = "Als der Regen vorbei war,";
constexpr std::chrono::seconds kListed{10};

const std::shared_ptr<VoiceCatalogue>& Catalogue()
{
    static const auto catalogue = std::make_shared<VoiceCatalogue>(std::vector{EspeakFamily()});
    return catalogue;
}

const std::wstring& German()
{
    static const std::wstring modeId = VoiceModeId(kEspeakCode, L"de");
    return modeId;
}

int TakeFirst(short*, int count, espeak_EVENT*) { return count > 0 ? 1 : 0; }
int TakeAll(short*, int, espeak_EVENT*) { return 0; }

void Synthesize(benchmark::State& state, const char* text, t_espeak_callback* callback)
{
    EspeakLibrary* library = EspeakLibrary::Instance();
    if (!library)
        return state.SkipWithError("eSpeak NG is not installed");
    const std::lock_guard turn(library->Turn());
    library->SetSynthCallback(callback);
    for (auto _ : state) {
        library->SetVoiceByName("de");
        library->Synth(text, std::strlen(text) + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8, nullptr, nullptr);
    }
}

void YardstickToFirstSample(benchmark::State& state) { Synthesize(state, kTenWordsUtf8, TakeFirst); }
void YardstickFirstClause(benchmark::State& state) { Synthesize(state, kFirstClauseUtf8, TakeAll); }
void YardstickTenWords(benchmark::State& state) { Synthesize(state, kTenWordsUtf8, TakeAll); }

class FirstSample : public UtteranceSink {
public:
    bool Samples(std::span<const std::int16_t>) override { return false; }
    void Event(std::int64_t, SpeechEvent) override {}
};

class AllSamples : public UtteranceSink {
public:
    bool Samples(std::span<const std::int16_t>) override { return true; }
    void Event(std::int64_t, SpeechEvent) override {}
};

template <typename Sink> void Render(benchmark::State& state)
{
    const Voice* voice = Catalogue()->Find(German(), kListed);
    if (!voice)
        return state.SkipWithError("eSpeak NG is not installed");
    EngineSynthesizer synthesizer(std::make_unique<FliteSynthesizer>());
    for (auto _ : state) {
        Sink sink;
        UtteranceRenderer renderer(kTenWords, *voice, synthesizer, sink);
        while (renderer.RenderClause()) {
        }
    }
}

void TenWordsToFirstSample(benchmark::State& state) { Render<FirstSample>(state); }
void TenWords(benchmark::State& state) { Render<AllSamples>(state); }

// The same with the threads, the queue and the clock, which looks every hundredth of a second.
void EngineToFirstEvent(benchmark::State& state)
{
    const auto engine =
        MakeSpeechEngine({.output = SpeechEngineOptions::Output::Silent, .systemVoices = Catalogue()});
    if (!engine->SetMode(German()).Ok())
        return state.SkipWithError("eSpeak NG is not installed");
    for (auto _ : state) {
        engine->Start(kTenWords);
        while (engine->TakeDueEvents().empty()) {
        }
        engine->Stop();
    }
}

// What choosing the voice costs when nothing has been asked before.
void ChooseVoice(benchmark::State& state)
{
    for (auto _ : state) {
        VoiceCatalogue catalogue({EspeakFamily()});
        benchmark::DoNotOptimize(catalogue.Find(German(), kListed));
    }
}

BENCHMARK(YardstickToFirstSample)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(YardstickFirstClause)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(TenWordsToFirstSample)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(YardstickTenWords)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(TenWords)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(EngineToFirstEvent)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ChooseVoice)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace voxtrel::agent::voices
