// From clauses to the samples and events of an utterance.
//
// The synthesizer's own silence around a clause is cut off by ear, not by its clock: what comes before the
// first sample and after the last one that can be heard goes. So natural pauses have the lengths given here,
// and a silence that the text asks for is exact. Quiet samples inside a clause are held back until a loud one
// follows. Events wait beside the samples they belong to and are given just before them.

#include "agent/speech/utterance_renderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <utility>

namespace voxtrel::agent::speech {

namespace {

using Kind = SpeechEvent::Kind;

constexpr std::int64_t kLead = SamplesOf(10);
constexpr std::int64_t kInnerLead =
    SamplesOf(40); // part of a natural pause: soft consonants keep their approach
constexpr std::int64_t kExactLead = SamplesOf(1); // next to a silence that is to be exact
constexpr std::int64_t kTail = SamplesOf(6);
constexpr std::int64_t kExactTail = SamplesOf(1);
constexpr std::int64_t kLatestOnset = SamplesOf(80); // after the start of the first phoneme
constexpr std::int64_t kMouthHold = SamplesOf(50);
constexpr std::int64_t kLatestMouth = SamplesOf(20); // after its phoneme
constexpr double kFaded = 0.04; // of the clause's loudest sample: the voice has died away
constexpr double kEmphasisGain = 1.3;

// Above the knee samples are bent so that they never reach the limit.
constexpr double kKnee = 24000;
constexpr double kLimit = 32767;

double PauseMs(Break before)
{
    switch (before) {
    case Break::None:
        return 30;
    case Break::Comma:
        return 160;
    case Break::Semicolon:
        return 240;
    case Break::Sentence:
        return 380;
    case Break::Paragraph:
        return 600;
    }
    return 0;
}

std::int16_t Limit(double sample)
{
    const double size = std::abs(sample);
    if (size <= kKnee)
        return static_cast<std::int16_t>(std::lround(sample));
    const double bent = kKnee + (kLimit - kKnee) * std::tanh((size - kKnee) / (kLimit - kKnee));
    return static_cast<std::int16_t>(std::lround(std::copysign(bent, sample)));
}

} // namespace

UtteranceRenderer::UtteranceRenderer(std::wstring_view markup, const Voice& voice, Synthesizer& synthesizer,
                                     UtteranceSink& sink, ClauseCutter::Bookmarks bookmarks)
    : UtteranceRenderer(ClauseCutter(markup, bookmarks, WordingFor(voice)), voice, synthesizer, sink)
{
}

UtteranceRenderer::UtteranceRenderer(ClauseCutter clauses, const Voice& voice, Synthesizer& synthesizer,
                                     UtteranceSink& sink)
    : cutter_(std::move(clauses)), voice_(voice), synthesizer_(synthesizer), sink_(sink),
      audible_(AudibleLevel(voice)), mouthSince_(-kMouthHold)
{
    synthesizer_.BeginUtterance();
}

bool UtteranceRenderer::RenderClause()
{
    clause_ = cutter_.Next();
    timed_ = false;
    if (!clause_.tokens.empty()) {
        if (!paused_)
            AddSilence(SamplesOf(PauseMs(clause_.before) / clause_.prosody.SpeedFactor()) - kInnerLead);
        gain_ = voice_.gain * clause_.prosody.Gain();
        begun_ = false;
        synthesizer_.Speak(clause_.tokens, voice_, clause_.prosody, *this);
        if (!stopped_)
            EndSound();
    }
    if (!timed_) {
        for (const Cue& cue : clause_.cues)
            Give(cue);
    }
    if (clause_.pauseMs > 0) {
        AddSilence(SamplesOf(clause_.pauseMs));
        paused_ = true;
    }
    if (clause_.last && !stopped_)
        sink_.Event(made_, {.kind = Kind::End});
    return !stopped_ && !clause_.last;
}

bool UtteranceRenderer::Timing(const SpeechTiming& timing)
{
    timing_ = timing;
    timed_ = true;
    loudest_ = 0;
    held_.clear();
    return !stopped_;
}

bool UtteranceRenderer::Samples(std::span<const std::int16_t> samples)
{
    if (begun_) {
        Hold(samples);
        return !stopped_;
    }
    held_.insert(held_.end(), samples.begin(), samples.end());
    FindOnset();
    return !stopped_;
}

// Looks for the first audible sample near the place where the synthesizer says that speech begins.
void UtteranceRenderer::FindOnset()
{
    const auto size = std::ssize(held_);
    const std::int64_t latest = timing_.speechStart + kLatestOnset;
    const std::int64_t from = std::clamp<std::int64_t>(timing_.speechStart - kLatestOnset, 0, size);
    const std::int64_t to = std::min<std::int64_t>(size, latest);
    const auto loud = [this](std::int16_t sample) { return Audible(sample); };
    const auto onset =
        std::find_if(held_.begin() + from, held_.begin() + std::max(from, to), loud) - held_.begin();
    if (onset >= to && size < latest)
        return;
    const std::int64_t lead = !spoken_ ? kLead : paused_ ? kExactLead : kInnerLead;
    const std::int64_t cut = std::clamp<std::int64_t>(onset - lead, 0, size);
    offset_ = made_ - cut;
    paused_ = false;
    spoken_ = true;
    begun_ = true;
    PlanEvents();
    std::vector<std::int16_t> rest(held_.begin() + cut, held_.end());
    for (std::int64_t i = 0; i < onset - cut; ++i)
        rest[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(
            rest[static_cast<std::size_t>(i)] * static_cast<double>(i) / static_cast<double>(lead));
    held_.clear();
    Hold(rest);
}

void UtteranceRenderer::PlanEvents()
{
    events_.clear();
    for (const Cue& cue : clause_.cues) {
        if (cue.token >= timing_.tokenStarts.size())
            break;
        const std::int64_t at = offset_ + timing_.tokenStarts[cue.token];
        switch (cue.kind) {
        case Cue::Kind::Mark:
            events_.push_back({at, {.kind = Kind::Bookmark, .number = cue.number}});
            break;
        case Cue::Kind::BalloonWord:
            events_.push_back({at, {.kind = Kind::BalloonWord, .text = cue.text}});
            break;
        case Cue::Kind::LineBreak:
            events_.push_back({at, {.kind = Kind::LineBreak}});
            break;
        }
    }
    PlanMouths();
    std::stable_sort(events_.begin(), events_.end(),
                     [](const TimedEvent& a, const TimedEvent& b) { return a.sample < b.sample; });
}

// A mouth that would be gone before it is seen gives way to the next one, which must not come late for it.
void UtteranceRenderer::PlanMouths()
{
    acs::Mouth shown = mouth_;
    std::int64_t since = mouthSince_;
    for (std::size_t i = 0; i < timing_.phonemes.size(); ++i) {
        const std::int64_t start = offset_ + std::max(timing_.phonemes[i].start, timing_.speechStart);
        const std::int64_t end = i + 1 < timing_.phonemes.size() ? offset_ + timing_.phonemes[i + 1].start
                                                                 : offset_ + timing_.speechEnd;
        const std::int64_t at = std::max(start, since + kMouthHold);
        if (timing_.phonemes[i].mouth == shown || at + kMouthHold > end + kLatestMouth)
            continue;
        shown = timing_.phonemes[i].mouth;
        since = at;
        events_.push_back({at, {.kind = Kind::Mouth, .mouth = shown}});
    }
}

void UtteranceRenderer::Hold(std::span<const std::int16_t> samples)
{
    held_.insert(held_.end(), samples.begin(), samples.end());
    for (const std::int16_t sample : samples)
        loudest_ = std::max(loudest_, std::abs(int{sample}));
    Release(UntilLast(std::max(audible_, static_cast<int>(loudest_ * kFaded))));
}

// How many of the samples held there are up to the last one of at least this amplitude.
std::size_t UtteranceRenderer::UntilLast(int amplitude) const
{
    const auto loud = std::find_if(held_.rbegin(), held_.rend(), [amplitude](std::int16_t sample) {
        return std::abs(int{sample}) >= amplitude;
    });
    return static_cast<std::size_t>(held_.rend() - loud);
}

// What is still held is the voice dying away, for up to a fifth of a second. The mouth closes when that
// begins, unless a soft consonant is in it.
void UtteranceRenderer::CloseMouthAtFade()
{
    const auto isMouth = [](const TimedEvent& event) { return event.event.kind == Kind::Mouth; };
    auto last = std::find_if(events_.rbegin(), events_.rend(), isMouth);
    if (last != events_.rend() && last->event.mouth == acs::Mouth::Closed) {
        events_.erase(std::prev(last.base()));
        last = std::find_if(events_.rbegin(), events_.rend(), isMouth);
    }
    const bool moves = last != events_.rend();
    if (moves || mouth_ != acs::Mouth::Closed) {
        const std::int64_t at = moves ? std::max(made_, last->sample + kMouthHold) : made_;
        const auto behind = std::find_if(events_.begin(), events_.end(),
                                         [at](const TimedEvent& event) { return event.sample > at; });
        events_.insert(behind, {at, {.kind = Kind::Mouth, .mouth = acs::Mouth::Closed}});
    }
    Release(UntilLast(audible_));
}

void UtteranceRenderer::Release(std::size_t count)
{
    if (count == 0 || stopped_)
        return;
    ready_.assign(held_.begin(), held_.begin() + static_cast<std::ptrdiff_t>(count));
    held_.erase(held_.begin(), held_.begin() + static_cast<std::ptrdiff_t>(count));
    Amplify(ready_, made_);
    ReleaseEvents(made_ + static_cast<std::int64_t>(count));
    made_ += static_cast<std::int64_t>(count);
    stopped_ = !sink_.Samples(ready_);
}

void UtteranceRenderer::ReleaseEvents(std::int64_t before)
{
    for (; !events_.empty() && events_.front().sample < before; events_.pop_front()) {
        TimedEvent& due = events_.front();
        due.sample = std::max(due.sample, made_);
        if (due.event.kind == Kind::Mouth) {
            mouth_ = due.event.mouth;
            mouthSince_ = due.sample;
        }
        sink_.Event(due.sample, std::move(due.event));
    }
}

// Of the silence at the end a few samples stay, faded out.
void UtteranceRenderer::EndSound()
{
    if (!timed_)
        return;
    if (!begun_) {
        offset_ = made_;
        PlanEvents();
    } else if (!held_.empty()) {
        CloseMouthAtFade();
    }
    const std::int64_t wanted = clause_.pauseMs > 0 ? kExactTail : kTail;
    const auto tail =
        static_cast<std::size_t>(std::min<std::int64_t>(std::ssize(held_), begun_ ? wanted : 0));
    for (std::size_t i = 0; i < tail; ++i)
        held_[i] =
            static_cast<std::int16_t>(held_[i] * static_cast<double>(tail - i) / static_cast<double>(tail));
    Release(tail);
    held_.clear();
    while (!events_.empty()) // what was to come in the silence that is gone
        ReleaseEvents(events_.front().sample + 1);
    if (mouth_ != acs::Mouth::Closed)
        GiveMouth(acs::Mouth::Closed);
    for (const Cue& cue : clause_.cues) {
        if (cue.token >= timing_.tokenStarts.size())
            Give(cue);
    }
}

void UtteranceRenderer::AddSilence(std::int64_t samples)
{
    static constexpr std::array<std::int16_t, 1024> kSilence{};
    while (samples > 0 && !stopped_) {
        const auto count = std::min<std::int64_t>(samples, kSilence.size());
        made_ += count;
        samples -= count;
        stopped_ = !sink_.Samples({kSilence.data(), static_cast<std::size_t>(count)});
    }
}

void UtteranceRenderer::Amplify(std::span<std::int16_t> samples, std::int64_t first)
{
    for (std::size_t token = 0; token < clause_.tokens.size() && token < timing_.tokenStarts.size();
         ++token) {
        if (!clause_.tokens[token].emphasized)
            continue;
        const std::int64_t begin = offset_ + timing_.tokenStarts[token] - first;
        const std::int64_t end = token + 1 < timing_.tokenStarts.size()
                                     ? offset_ + timing_.tokenStarts[token + 1] - first
                                     : offset_ + timing_.speechEnd - first;
        const auto ramp = static_cast<double>(SamplesOf(20));
        for (std::int64_t i = std::max<std::int64_t>(begin, 0); i < std::min(end, std::ssize(samples)); ++i) {
            const double in =
                std::min({1.0, static_cast<double>(i - begin) / ramp, static_cast<double>(end - i) / ramp});
            samples[static_cast<std::size_t>(i)] =
                Limit(samples[static_cast<std::size_t>(i)] * (1 + (kEmphasisGain - 1) * in));
        }
    }
    for (std::int16_t& sample : samples)
        sample = Limit(sample * gain_);
}

void UtteranceRenderer::Give(const Cue& cue)
{
    if (stopped_)
        return;
    switch (cue.kind) {
    case Cue::Kind::Mark:
        return sink_.Event(made_, {.kind = Kind::Bookmark, .number = cue.number});
    case Cue::Kind::BalloonWord:
        return sink_.Event(made_, {.kind = Kind::BalloonWord, .text = cue.text});
    case Cue::Kind::LineBreak:
        return sink_.Event(made_, {.kind = Kind::LineBreak});
    }
}

void UtteranceRenderer::GiveMouth(acs::Mouth mouth)
{
    mouth_ = mouth;
    mouthSince_ = made_;
    if (!stopped_)
        sink_.Event(made_, {.kind = Kind::Mouth, .mouth = mouth});
}

} // namespace voxtrel::agent::speech
