#include "agent/speech/engine_synthesizer.h"

#include "agent/acs/unicode.h"
#include "agent/speech/resampler.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace voxtrel::agent::speech {

namespace {

constexpr std::size_t kChunk = SamplesOf(50);
constexpr int kLowestRate = 4000, kHighestRate = 64000; // what can be resampled

std::vector<std::int16_t> AtOurRate(std::vector<std::int16_t> samples, int rate)
{
    if (rate == kSampleRate)
        return samples;
    std::vector<std::int16_t> resampled;
    Resampler resampler(static_cast<double>(rate) / kSampleRate);
    resampler.Process(samples, resampled);
    resampler.Finish(resampled);
    return resampled;
}

std::int64_t AtOurRate(std::int64_t sample, int rate) { return sample * kSampleRate / rate; }

bool Give(std::span<const std::int16_t> samples, SpeechSink& sink)
{
    while (!samples.empty()) {
        const std::size_t count = std::min(kChunk, samples.size());
        if (!sink.Samples(samples.first(count)))
            return false;
        samples = samples.subspan(count);
    }
    return true;
}

} // namespace

Phrase MakePhrase(std::span<const SpokenToken> tokens, const Prosody& prosody)
{
    Phrase phrase{.words = {}, .prosody = prosody};
    for (const SpokenToken& token : tokens) {
        PhraseWord word{acs::WideFromUtf8(token.name), token.emphasized};
        if (token.punctuation != 0)
            word.text += static_cast<wchar_t>(token.punctuation);
        phrase.words.push_back(std::move(word));
    }
    return phrase;
}

// Takes the built-in voice for the rest of a phrase of which the engine has said a part.
class EngineSynthesizer::StandInSink : public SpeechSink {
public:
    // owners: for each token of the built-in voice, which of the words left it belongs to.
    StandInSink(Rendition before, std::vector<std::size_t> owners, std::size_t wordsLeft, double gain,
                SpeechSink& sink)
        : before_(std::move(before)), owners_(std::move(owners)), wordsLeft_(wordsLeft), gain_(gain),
          sink_(sink)
    {
    }

    bool Timing(const SpeechTiming& timing) override
    {
        begun_ = true;
        const std::int64_t offset = std::ssize(before_.samples);
        SpeechTiming& whole = before_.timing;
        if (before_.samples.empty())
            whole.speechStart = timing.speechStart;
        whole.speechEnd = offset + timing.speechEnd;
        for (Phoneme phoneme : timing.phonemes) {
            phoneme.start += offset;
            whole.phonemes.push_back(phoneme);
        }
        for (std::size_t word = 0, token = 0; word < wordsLeft_; ++word) {
            while (token < owners_.size() && owners_[token] < word)
                ++token;
            whole.tokenStarts.push_back(
                offset + (token < timing.tokenStarts.size() ? timing.tokenStarts[token] : timing.speechEnd));
        }
        return sink_.Timing(whole) && Give(before_.samples, sink_);
    }

    bool Samples(std::span<const std::int16_t> samples) override
    {
        louder_.clear();
        for (const std::int16_t sample : samples)
            louder_.push_back(static_cast<std::int16_t>(std::clamp(sample * gain_, -32768.0, 32767.0)));
        return sink_.Samples(louder_);
    }

    bool Wanted() const override { return sink_.Wanted(); }

    // For a rest in which there was nothing that the built-in voice can say.
    void Finish()
    {
        if (begun_ || before_.samples.empty())
            return;
        before_.timing.tokenStarts.resize(before_.timing.tokenStarts.size() + wordsLeft_,
                                          before_.timing.speechEnd);
        if (sink_.Timing(before_.timing))
            Give(before_.samples, sink_);
    }

private:
    Rendition before_;
    std::vector<std::size_t> owners_;
    std::size_t wordsLeft_;
    double gain_;
    SpeechSink& sink_;
    std::vector<std::int16_t> louder_;
    bool begun_ = false;
};

EngineSynthesizer::EngineSynthesizer(std::unique_ptr<Synthesizer> builtIn, EngineWorker::Patience patience)
    : builtIn_(std::move(builtIn)), patience_(patience)
{
}

void EngineSynthesizer::Prepare(const Voice& voice)
{
    if (!voice.system)
        builtIn_->Prepare(voice);
}

EngineWorker& EngineSynthesizer::WorkerOf(const VoiceFamily& family)
{
    std::unique_ptr<EngineWorker>& worker = workers_[&family];
    if (!worker)
        worker = std::make_unique<EngineWorker>(family.makeEngine, patience_);
    return *worker;
}

void EngineSynthesizer::Speak(std::span<const SpokenToken> tokens, const Voice& voice, const Prosody& prosody,
                              SpeechSink& sink)
{
    if (!voice.system)
        return builtIn_->Speak(tokens, voice, prosody, sink);
    if (tokens.empty())
        return;
    if (failed_ || !voice.family->makeEngine)
        return StandIn(tokens, voice, prosody, {}, sink);

    Phrase phrase = MakePhrase(tokens, prosody);
    SpokenPhrase spoken =
        WorkerOf(*voice.family).Speak(*voice.system, phrase, [&sink] { return sink.Wanted(); });
    if (spoken.outcome == SpokenPhrase::Outcome::Unwanted)
        return;
    const bool usable =
        spoken.samples.empty() || (spoken.sampleRate >= kLowestRate && spoken.sampleRate <= kHighestRate);
    if (!usable)
        spoken = {};
    if (spoken.outcome == SpokenPhrase::Outcome::Failed) {
        failed_ = true;
        const std::size_t said = CutAtLastWord(spoken, phrase.words.size());
        phrase.words.resize(said);
        return StandIn(tokens.subspan(said), voice, prosody, Render(phrase, spoken, voice), sink);
    }
    const Rendition rendition = Render(phrase, spoken, voice);
    if (!rendition.samples.empty() && sink.Timing(rendition.timing))
        Give(rendition.samples, sink);
}

// Of a phrase that was broken off the word that was being said is said anew. Returns how many words are left
// before it.
std::size_t EngineSynthesizer::CutAtLastWord(SpokenPhrase& spoken, std::size_t words)
{
    ReportedWord last;
    for (const ReportedWord& report : spoken.words) {
        if (report.word > last.word && report.word < words && report.sample > last.sample &&
            report.sample < std::ssize(spoken.samples))
            last = report;
    }
    spoken.samples.resize(static_cast<std::size_t>(last.sample));
    return last.word;
}

EngineSynthesizer::Rendition EngineSynthesizer::Render(const Phrase& phrase, const SpokenPhrase& spoken,
                                                       const Voice& voice)
{
    Rendition made;
    if (spoken.samples.empty())
        return made;
    made.samples = AtOurRate(spoken.samples, spoken.sampleRate);

    const int audible = AudibleLevel(voice);
    const auto loud = [audible](std::int16_t sample) { return std::abs(int{sample}) >= audible; };
    SpeechTiming& timing = made.timing;
    timing.speechStart = std::find_if(made.samples.begin(), made.samples.end(), loud) - made.samples.begin();
    timing.speechEnd = made.samples.rend() - std::find_if(made.samples.rbegin(), made.samples.rend(), loud);
    timing.speechEnd = std::max(timing.speechEnd, timing.speechStart);

    std::vector<ReportedWord> reported = spoken.words;
    for (ReportedWord& report : reported)
        report.sample = AtOurRate(report.sample, spoken.sampleRate);
    timing.tokenStarts = PlaceWords(phrase, reported, timing.speechStart, timing.speechEnd);

    for (Phoneme phoneme : spoken.mouths) {
        phoneme.start = AtOurRate(phoneme.start, spoken.sampleRate);
        if (phoneme.start < timing.speechEnd)
            timing.phonemes.push_back(phoneme);
    }
    if (timing.phonemes.empty()) {
        for (std::size_t i = 0; i < phrase.words.size(); ++i) {
            const std::int64_t end =
                i + 1 < phrase.words.size() ? timing.tokenStarts[i + 1] : timing.speechEnd;
            const auto mouths = MouthsOfWord(phrase.words[i].text, timing.tokenStarts[i], end);
            timing.phonemes.insert(timing.phonemes.end(), mouths.begin(), mouths.end());
        }
    }
    return made;
}

void EngineSynthesizer::StandIn(std::span<const SpokenToken> tokens, const Voice& voice,
                                const Prosody& prosody, Rendition before, SpeechSink& sink)
{
    std::vector<SpokenToken> english;
    std::vector<std::size_t> owners;
    const Phrase words = MakePhrase(tokens, prosody);
    for (std::size_t i = 0; i < words.words.size(); ++i) {
        for (SpokenToken& token : NormalizeRun(words.words[i].text, prosody.context).tokens) {
            token.emphasized = tokens[i].emphasized;
            english.push_back(std::move(token));
            owners.push_back(i);
        }
    }
    const Voice& standIn = StandInFor(voice);
    StandInSink joined(std::move(before), std::move(owners), tokens.size(), standIn.gain / voice.gain, sink);
    if (!english.empty())
        builtIn_->Speak(english, standIn, prosody, joined);
    joined.Finish();
}

} // namespace voxtrel::agent::speech
