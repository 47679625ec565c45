// How quickly speech begins and how fast it is made, each beside the bare synthesizer on the same clauses.

#include "agent/speech/clause_cutter.h"
#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/speech_factory.h"
#include "agent/speech/utterance_renderer.h"

#include <benchmark/benchmark.h>

#include <ostream>
#include <streambuf>
#include <string>

extern "C" {
#include <flite.h>
cst_voice* register_cmu_us_rms(const char* directory);
}

namespace voxtrel::agent::speech {
namespace {

constexpr wchar_t kTenWords[] = L"When the rain had stopped, they walked back to town. ";

// Sentences of different lengths, as in any letter.
std::wstring Text(std::size_t length)
{
    static constexpr const wchar_t* kSentences[] = {
        kTenWords,
        L"It was late. ",
        L"Nobody had expected that the old bridge, which had been closed for years, would open again. ",
        L"\"Will you come with us?\" she asked, and he said that he would think about it. ",
        L"The train leaves at 10:30 from platform 4. ",
    };
    std::wstring text;
    for (std::size_t i = 0; text.size() < length; ++i)
        text += kSentences[i % std::size(kSentences)];
    return text;
}

class FirstSample : public UtteranceSink {
public:
    bool Samples(std::span<const std::int16_t>) override { return false; }
    void Event(std::int64_t, SpeechEvent) override {}
};

// The way from Speak to the first sample, without the threads.
void SpeakToFirstSample(benchmark::State& state, const std::wstring& text)
{
    FliteSynthesizer synthesizer;
    synthesizer.Prepare(AllVoices().front());
    for (auto _ : state) {
        FirstSample sink;
        UtteranceRenderer renderer(text, AllVoices().front(), synthesizer, sink);
        while (renderer.RenderClause()) {
        }
    }
}

void TenWordsToFirstSample(benchmark::State& state) { SpeakToFirstSample(state, kTenWords); }
void TenMegabytesToFirstSample(benchmark::State& state) { SpeakToFirstSample(state, Text(10'000'000)); }

// As the Text Reader sends it.
void TenMappedMegabytesToFirstSample(benchmark::State& state)
{
    std::wstring markup;
    for (const wchar_t c : Text(3'000'000))
        markup += c == L' ' ? L" \\Mrk=500001\\" : std::wstring(1, c);
    SpeakToFirstSample(state, L"\\map=\"" + markup + L"\"=\"\"\\");
}

// The same with the threads, the queue and the clock.
void EngineToFirstEvent(benchmark::State& state)
{
    const auto engine = MakeSpeechEngine({.output = SpeechEngineOptions::Output::Silent});
    for (auto _ : state) {
        engine->Start(kTenWords);
        while (engine->TakeDueEvents().empty()) {
        }
        engine->Stop();
    }
}

std::string Said(const Clause& clause)
{
    std::string text;
    for (const SpokenToken& token : clause.tokens) {
        text += token.name;
        if (token.punctuation != 0)
            text += token.punctuation;
        text += ' ';
    }
    return text;
}

std::vector<std::string> ClausesOf(std::wstring_view text)
{
    std::vector<std::string> clauses;
    ClauseCutter cutter(text);
    for (Clause clause = cutter.Next();; clause = cutter.Next()) {
        if (!clause.tokens.empty())
            clauses.push_back(Said(clause));
        if (clause.last)
            return clauses;
    }
}

cst_voice* Rms()
{
    flite_init();
    return register_cmu_us_rms(nullptr);
}

void YardstickFirstClause(benchmark::State& state)
{
    cst_voice* voice = Rms();
    const std::string first = ClausesOf(kTenWords).front();
    for (auto _ : state)
        delete_wave(flite_text_to_wave(first.c_str(), voice));
    state.SetLabel(first);
}

class Nowhere : public std::streambuf {
    int overflow(int c) override { return c; }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

void RenderHundredKilobytes(benchmark::State& state)
{
    const std::wstring text = Text(100'000);
    for (auto _ : state) {
        Nowhere nowhere;
        std::ostream out(&nowhere);
        Ignore(RenderToWav(text, {}, out));
    }
}

void YardstickHundredKilobytes(benchmark::State& state)
{
    cst_voice* voice = Rms();
    const std::vector<std::string> clauses = ClausesOf(Text(100'000));
    for (auto _ : state) {
        for (const std::string& clause : clauses)
            delete_wave(flite_text_to_wave(clause.c_str(), voice));
    }
}

BENCHMARK(YardstickFirstClause)->Unit(benchmark::kMillisecond);
BENCHMARK(TenWordsToFirstSample)->Unit(benchmark::kMillisecond);
BENCHMARK(TenMegabytesToFirstSample)->Unit(benchmark::kMillisecond);
BENCHMARK(TenMappedMegabytesToFirstSample)->Unit(benchmark::kMillisecond);
BENCHMARK(EngineToFirstEvent)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(YardstickHundredKilobytes)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(RenderHundredKilobytes)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
} // namespace voxtrel::agent::speech
