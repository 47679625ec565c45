#include "agent/speech/playback.h"

#include "agent/speech/synthesizer.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace voxtrel::agent::speech {

namespace {

constexpr std::size_t kAhead =
    SamplesOf(2500); // more than the longest clause takes to make on a slow machine
constexpr std::size_t kMostEvents = 4096;
constexpr std::size_t kFade = SamplesOf(5);
constexpr std::size_t kStretches = 64;

std::chrono::nanoseconds Duration(std::int64_t samples)
{
    return std::chrono::nanoseconds(samples * 1'000'000'000 / kSampleRate);
}

// Sample i of a stretch that fades to silence over its length.
std::int16_t Faded(std::int16_t sample, std::size_t i, std::size_t length)
{
    return static_cast<std::int16_t>(sample * static_cast<int>(length - i) / static_cast<int>(length));
}

std::int16_t Mixed(std::int16_t a, std::int16_t b)
{
    using Range = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(a + b, Range::min(), Range::max()));
}

} // namespace

Playback::Utterance Playback::Begin()
{
    const std::lock_guard lock(mutex_);
    Drop();
    active_ = true;
    return ++current_;
}

void Playback::Stop()
{
    const std::lock_guard lock(mutex_);
    Drop();
}

void Playback::Drop()
{
    const std::size_t fade = std::min(kFade, samples_.size());
    for (std::size_t i = 0; i < fade; ++i)
        fading_.push_back(Faded(samples_[i], i, fade));
    samples_.clear();
    samples_.shrink_to_fit();
    events_.clear();
    stretches_.clear();
    made_ = 0;
    played_ = 0;
    active_ = false;
    ++current_;
    roomMade_.notify_all();
}

bool Playback::Active() const
{
    const std::lock_guard lock(mutex_);
    return active_;
}

bool Playback::IsCurrent(Utterance utterance) const
{
    const std::lock_guard lock(mutex_);
    return utterance == current_ && !closed_;
}

bool Playback::AddSamples(Utterance utterance, std::span<const std::int16_t> samples)
{
    const std::lock_guard lock(mutex_);
    if (utterance != current_ || closed_)
        return false;
    samples_.insert(samples_.end(), samples.begin(), samples.end());
    made_ += std::ssize(samples);
    return true;
}

void Playback::AddEvent(Utterance utterance, std::int64_t sample, SpeechEvent event)
{
    const std::lock_guard lock(mutex_);
    if (utterance == current_)
        events_.push_back({sample, std::move(event)});
}

bool Playback::WaitForRoom(Utterance utterance)
{
    std::unique_lock lock(mutex_);
    roomMade_.wait(lock, [&] {
        return closed_ || utterance != current_ || (samples_.size() < kAhead && events_.size() < kMostEvents);
    });
    return !closed_ && utterance == current_;
}

void Playback::Close()
{
    const std::lock_guard lock(mutex_);
    closed_ = true;
    roomMade_.notify_all();
}

std::size_t Playback::Pull(std::span<std::int16_t> out, TimePoint heardAt)
{
    const std::lock_guard lock(mutex_);
    lastPull_ = std::chrono::steady_clock::now();
    const std::size_t faded = std::min(out.size(), fading_.size());
    std::copy_n(fading_.begin(), faded, out.begin());
    fading_.erase(fading_.begin(), fading_.begin() + static_cast<std::ptrdiff_t>(faded));

    const std::size_t count = std::min(out.size() - faded, samples_.size());
    std::copy_n(samples_.begin(), count, out.begin() + static_cast<std::ptrdiff_t>(faded));
    samples_.erase(samples_.begin(), samples_.begin() + static_cast<std::ptrdiff_t>(count));
    std::fill(out.begin() + static_cast<std::ptrdiff_t>(faded + count), out.end(), std::int16_t{0});
    if (count > 0) {
        const auto end = played_ + static_cast<std::int64_t>(count);
        stretches_.push_back({played_, end, heardAt + Duration(static_cast<std::int64_t>(faded))});
        played_ = end;
        if (stretches_.size() > kStretches)
            stretches_.pop_front();
        if (samples_.size() < kAhead)
            roomMade_.notify_all();
    }
    const std::size_t filled = std::max(faded + count, MixSounds(out));
    if (recording_)
        recorded_.insert(recorded_.end(), out.begin(), out.begin() + static_cast<std::ptrdiff_t>(filled));
    return filled;
}

void Playback::AddSound(std::span<const std::int16_t> samples)
{
    const std::lock_guard lock(mutex_);
    sounds_.resize(std::max(sounds_.size(), samples.size()));
    for (std::size_t i = 0; i < samples.size(); ++i)
        sounds_[i] = Mixed(sounds_[i], samples[i]);
}

void Playback::StopSounds()
{
    const std::lock_guard lock(mutex_);
    sounds_.resize(std::min(kFade, sounds_.size()));
    for (std::size_t i = 0; i < sounds_.size(); ++i)
        sounds_[i] = Faded(sounds_[i], i, sounds_.size());
}

// Returns how many samples the sounds still had for out.
std::size_t Playback::MixSounds(std::span<std::int16_t> out)
{
    const std::size_t count = std::min(out.size(), sounds_.size());
    for (std::size_t i = 0; i < count; ++i)
        out[i] = Mixed(out[i], sounds_[i]);
    sounds_.erase(sounds_.begin(), sounds_.begin() + static_cast<std::ptrdiff_t>(count));
    return count;
}

// The number of samples of the current utterance that have been heard, -1 before the first.
std::int64_t Playback::HeardUntil(TimePoint now) const
{
    const auto next = std::find_if(stretches_.begin(), stretches_.end(),
                                   [now](const Stretch& stretch) { return stretch.heardAt > now; });
    if (next == stretches_.begin())
        return stretches_.empty() || next->begin == 0 ? -1 : next->begin;
    const Stretch& hearing = *std::prev(next);
    const auto since = std::chrono::duration_cast<std::chrono::nanoseconds>(now - hearing.heardAt).count();
    return std::min(hearing.end, hearing.begin + since * kSampleRate / 1'000'000'000);
}

// Where nothing is left to be heard before an event, nothing has to be waited for.
bool Playback::IsDue(const TimedEvent& event, std::int64_t heard) const
{
    return event.sample <= heard || (event.sample == 0 && made_ == 0);
}

std::vector<SpeechEvent> Playback::TakeDue(TimePoint now)
{
    const std::lock_guard lock(mutex_);
    std::vector<SpeechEvent> due;
    const std::int64_t heard = HeardUntil(now);
    while (!events_.empty() && IsDue(events_.front(), heard)) {
        due.push_back(std::move(events_.front().event));
        events_.pop_front();
    }
    if (!due.empty())
        roomMade_.notify_all();
    if (!due.empty() && due.back().kind == SpeechEvent::Kind::End)
        active_ = false;
    return due;
}

bool Playback::HasSamples() const
{
    const std::lock_guard lock(mutex_);
    return !samples_.empty() || !fading_.empty() || !sounds_.empty();
}

bool Playback::HasDue(TimePoint now) const
{
    const std::lock_guard lock(mutex_);
    return !events_.empty() && IsDue(events_.front(), HeardUntil(now));
}

std::optional<Playback::TimePoint> Playback::NextDue() const
{
    const std::lock_guard lock(mutex_);
    if (events_.empty())
        return std::nullopt;
    const std::int64_t sample = events_.front().sample;
    const auto heard = std::find_if(stretches_.begin(), stretches_.end(),
                                    [sample](const Stretch& stretch) { return stretch.end >= sample; });
    if (heard == stretches_.end())
        return std::nullopt;
    return heard->heardAt + Duration(std::max<std::int64_t>(sample - heard->begin, 0));
}

Playback::TimePoint Playback::LastPull() const
{
    const std::lock_guard lock(mutex_);
    return lastPull_;
}

std::vector<std::int16_t> Playback::TakePlayed()
{
    const std::lock_guard lock(mutex_);
    recording_ = true;
    return std::exchange(recorded_, {});
}

} // namespace voxtrel::agent::speech
