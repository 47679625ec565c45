#include "agent/speech/embedded_engine.h"

#include "agent/speech/flite_synthesizer.h"
#include "agent/speech/played_utterance.h"
#include "agent/speech/portaudio_output.h"
#include "agent/speech/tag_parser.h"
#include "agent/speech/text_characters.h"
#include "agent/speech/utterance_renderer.h"
#include "agent/speech/wav_reader.h"

#include <algorithm>
#include <array>
#include <random>
#include <utility>

namespace voxtrel::agent::speech {

namespace {

using std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto kTick = 10ms;
constexpr auto kOpeningTakes = 1500ms; // then the clock takes over until the device is there
constexpr auto kDeviceIsDead = 3s;     // when it has not asked for samples for so long; some begin late
constexpr auto kDeviceStaysOpen = 5s;  // a device opened late swallows the first syllable
constexpr auto kFirstOpening = 300ms;  // the windows of the program are there by then
constexpr std::size_t kLongestRepeated = 65536;
constexpr auto kSetModeWaits =
    700ms; // on the user-interface thread, for an engine that is asked for its voices
constexpr auto kEngineStartsWithin = 5s; // beside it

class PlaybackSink : public UtteranceSink {
public:
    PlaybackSink(Playback& playback, Playback::Utterance utterance)
        : playback_(playback), utterance_(utterance)
    {
    }

    bool Samples(std::span<const std::int16_t> samples) override
    {
        return playback_.AddSamples(utterance_, samples);
    }
    void Event(std::int64_t sample, SpeechEvent event) override
    {
        playback_.AddEvent(utterance_, sample, std::move(event));
    }
    bool Wanted() const override { return playback_.IsCurrent(utterance_); }

private:
    Playback& playback_;
    Playback::Utterance utterance_;
};

// As long as there are no samples, events are due when they come.
class ImmediateSink : public PlayedSink {
public:
    ImmediateSink(Playback& playback, Playback::Utterance utterance)
        : playback_(playback), utterance_(utterance)
    {
    }

    void Event(SpeechEvent event) override { playback_.AddEvent(utterance_, 0, std::move(event)); }
    bool Wanted() const override { return playback_.IsCurrent(utterance_); }

private:
    Playback& playback_;
    Playback::Utterance utterance_;
};

// Whether the text is nothing but the tag that repeats the last statement.
bool AsksForRepetition(std::wstring_view markup)
{
    TagParser parser(markup);
    bool asked = false;
    for (MarkupToken token = parser.Next(); token.kind != MarkupToken::Kind::End; token = parser.Next()) {
        const bool blank =
            token.kind == MarkupToken::Kind::Text &&
            std::all_of(token.text.begin(), token.text.end(), [](wchar_t c) { return IsWhiteSpace(c); });
        if (!blank && (asked || token.kind != MarkupToken::Kind::Repeat))
            return false;
        asked = asked || !blank;
    }
    return asked;
}

std::size_t PickAny(std::size_t count)
{
    static std::minstd_rand random(std::random_device{}());
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
}

} // namespace

EmbeddedEngine::EmbeddedEngine(SpeechEngineOptions options, std::unique_ptr<Synthesizer> synthesizer,
                               const OutputMaker& makeOutput)
    : options_(std::move(options)), synthesizer_(std::move(synthesizer)), voice_(FindVoice(options_.mode))
{
    if (!voice_)
        voice_ = &AllVoices().front();
    if (!options_.record.empty()) {
        recordFile_.open(options_.record, std::ios::binary | std::ios::trunc);
        recording_.emplace(recordFile_);
        recording_->UpdateHeader();
        static_cast<void>(playback_.TakePlayed());
    }
    if (makeOutput)
        output_ = makeOutput(playback_);
    lastBusy_ = steady_clock::now();
    maker_ = std::thread([this, voice = voice_] {
        synthesizer_.Prepare(*voice);
        MakeSound();
        players_.clear();
    });
    tender_ = std::thread([this] { TendOutput(); });
}

EmbeddedEngine::~EmbeddedEngine()
{
    playback_.Stop();
    playback_.Close();
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    workComes_.notify_all();
    maker_.join();
    tender_.join();
    output_.reset();
}

Result EmbeddedEngine::SetMode(std::wstring_view modeId)
{
    const Voice* voice = Find(modeId, kSetModeWaits);
    if (!voice)
        return Result::Failure(ErrorCode::VoiceNotAvailable, options_.messages.voiceNotAvailable);
    voice_ = voice;
    return Result::Success();
}

const Voice* EmbeddedEngine::Find(std::wstring_view modeId, std::chrono::milliseconds limit) const
{
    return options_.systemVoices ? options_.systemVoices->Find(modeId, limit) : FindVoice(modeId);
}

std::wstring EmbeddedEngine::Mode() const { return std::wstring(voice_->modeId); }

void EmbeddedEngine::Start(std::wstring markup)
{
    Job job{.utterance = playback_.Begin(), .voice = voice_};
    if (options_.alternatives)
        markup = std::wstring(PickAlternative(markup, PickAny));
    if (AsksForRepetition(markup)) {
        markup = lastStatement_;
        job.bookmarks = ClauseCutter::Bookmarks::Skip;
    } else {
        lastStatement_ = markup.size() <= kLongestRepeated ? markup : std::wstring();
    }
    job.markup = std::move(markup);
    {
        const std::lock_guard lock(mutex_);
        next_ = std::move(job);
    }
    workComes_.notify_all();
}

void EmbeddedEngine::Stop() { playback_.Stop(); }

bool EmbeddedEngine::Speaking() const { return playback_.Active(); }

std::vector<SpeechEvent> EmbeddedEngine::TakeDueEvents()
{
    {
        const std::lock_guard lock(mutex_);
        announced_ = false;
    }
    return playback_.TakeDue(steady_clock::now());
}

std::optional<std::chrono::nanoseconds> EmbeddedEngine::UntilNextEvent() const
{
    const auto due = playback_.NextDue();
    return due ? std::optional<std::chrono::nanoseconds>(*due - steady_clock::now()) : std::nullopt;
}

std::chrono::milliseconds EmbeddedEngine::StartSound(std::span<const std::uint8_t> wave)
{
    const std::vector<std::int16_t> samples = ReadWav(wave);
    playback_.AddSound(samples);
    {
        const std::lock_guard lock(mutex_); // whoever tends the output is not between looking and sleeping
    }
    workComes_.notify_all();
    return std::chrono::milliseconds(std::ssize(samples) * 1000 / kSampleRate);
}

void EmbeddedEngine::MakeSound()
{
    std::unique_lock lock(mutex_);
    while (true) {
        workComes_.wait(lock, [this] { return quit_ || next_; });
        if (quit_)
            return;
        const Job job = *std::exchange(next_, std::nullopt);
        lock.unlock();
        Perform(job);
        lock.lock();
    }
}

void EmbeddedEngine::Perform(const Job& job)
{
    const Voice* voice = job.voice;
    const TimePoint until = steady_clock::now() + kEngineStartsWithin;
    while (voice && IsUnchecked(*voice) && playback_.IsCurrent(job.utterance) && steady_clock::now() < until)
        voice = Find(voice->modeId, kTick);
    if (!voice || IsUnchecked(*voice))
        voice = &StandInFor(*job.voice);
    ClauseCutter clauses(job.markup, job.bookmarks, WordingFor(*voice));
    if (!voice->family || !voice->family->makePlayer || !Play(clauses, job, *voice))
        Render(std::move(clauses), job, *voice);
}

void EmbeddedEngine::Render(ClauseCutter clauses, const Job& job, const Voice& voice)
{
    PlaybackSink sink(playback_, job.utterance);
    UtteranceRenderer renderer(std::move(clauses), voice, synthesizer_, sink);
    while (playback_.WaitForRoom(job.utterance) && renderer.RenderClause()) {
    }
}

// False when the engine has failed; clauses is then what is left to be said.
bool EmbeddedEngine::Play(ClauseCutter& clauses, const Job& job, const Voice& voice)
{
    std::unique_ptr<VoicePlayer>& player = players_[voice.family];
    if (!player)
        player = voice.family->makePlayer();
    if (!player)
        return false;
    playsElsewhere_ = true;
    ImmediateSink sink(playback_, job.utterance);
    PlayedUtterance utterance(std::move(clauses), voice, *player, sink);
    const bool played = utterance.Run() != PlayedUtterance::Outcome::Broken;
    playsElsewhere_ = false;
    if (!played) {
        clauses = utterance.TakeRest();
        player.reset();
    }
    return played;
}

// The output is opened before it is needed, but looking for devices loads half the system's sound software:
// the windows of a program that has just been started come first.
void EmbeddedEngine::OpenOutputSoon()
{
    std::unique_lock lock(mutex_);
    workComes_.wait_for(lock, kFirstOpening,
                        [this] { return quit_ || playback_.Active() || playback_.HasSamples(); });
    if (!quit_ && output_)
        output_->Open();
}

void EmbeddedEngine::TendOutput()
{
    OpenOutputSoon();
    bool busy = false;
    while (true) {
        {
            std::unique_lock lock(mutex_);
            const auto work = [this] { return quit_ || playback_.Active() || playback_.HasSamples(); };
            const bool deviceOpen = output_ && output_->CurrentState() != AudioOutput::State::Closed &&
                                    output_->CurrentState() != AudioOutput::State::Failed;
            if (work())
                workComes_.wait_for(lock, kTick, [this] { return quit_; });
            else if (deviceOpen)
                workComes_.wait_until(lock, lastBusy_ + kDeviceStaysOpen, work);
            else
                workComes_.wait(lock, work);
            if (quit_)
                break;
        }
        const TimePoint now = steady_clock::now();
        const bool wasBusy = std::exchange(busy, playback_.Active() || playback_.HasSamples());
        if (busy && !wasBusy)
            busySince_ = now;
        if (busy)
            lastBusy_ = now;
        OpenOrCloseDevice(now);
        PlaySilently(now);
        Record();
        Announce(now);
    }
    Record();
}

void EmbeddedEngine::OpenOrCloseDevice(TimePoint now)
{
    if (!output_)
        return;
    if (lastBusy_ == now && (!playsElsewhere_ || playback_.HasSamples()))
        output_->Open();
    else if (now >= lastBusy_ + kDeviceStaysOpen)
        output_->Close();
}

bool EmbeddedEngine::DeviceServes(TimePoint now) const
{
    if (!output_)
        return false;
    switch (output_->CurrentState()) {
    case AudioOutput::State::Opening:
        return now < busySince_ + kOpeningTakes;
    case AudioOutput::State::Playing:
        return now < std::max(playback_.LastPull(), busySince_) + kDeviceIsDead;
    default:
        return false;
    }
}

// Without a device the clock pulls the samples.
void EmbeddedEngine::PlaySilently(TimePoint now)
{
    if (DeviceServes(now) || !playback_.HasSamples()) {
        silentSince_.reset();
        return;
    }
    if (output_ && output_->CurrentState() == AudioOutput::State::Playing)
        output_->GiveUp();
    if (!silentSince_) {
        silentSince_ = now - kTick;
        playedSilently_ = 0;
    }
    const auto sampleTime = [this](std::int64_t sample) {
        return *silentSince_ + std::chrono::nanoseconds(sample * 1'000'000'000 / kSampleRate);
    };
    std::array<std::int16_t, SamplesOf(10)> block{};
    while (sampleTime(playedSilently_ + std::ssize(block)) <= now) {
        playback_.Pull(block, sampleTime(playedSilently_));
        playedSilently_ += std::ssize(block);
    }
}

void EmbeddedEngine::Record()
{
    if (!recording_)
        return;
    const std::vector<std::int16_t> played = playback_.TakePlayed();
    if (played.empty())
        return;
    recording_->Write(played);
    recording_->UpdateHeader();
}

void EmbeddedEngine::Announce(TimePoint now)
{
    if (!options_.wake || !playback_.HasDue(now))
        return;
    {
        const std::lock_guard lock(mutex_);
        if (std::exchange(announced_, true))
            return;
    }
    options_.wake();
}

std::unique_ptr<SpeechEngine> MakeSpeechEngine(SpeechEngineOptions options)
{
    EmbeddedEngine::OutputMaker makeOutput;
    if (options.output == SpeechEngineOptions::Output::Auto)
        makeOutput = MakePortAudioOutput;
    return std::make_unique<EmbeddedEngine>(std::move(options), std::make_unique<FliteSynthesizer>(),
                                            makeOutput);
}

} // namespace voxtrel::agent::speech
