#include "agent/stage/stage_character.h"

#include "agent/stage/lip_sync.h"
#include "agent/stage/names.h"

#include <algorithm>
#include <utility>

// A character at work: the requests that it carries out, and what else moves it. stage_character_look.cpp has
// its properties, its picture and the pointer.
//
// A request goes through up to three phases. Leaving: what was played last is left. Performing: the request's
// own animation runs. Speaking: the engine speaks, and the tick turns what it reports into mouths, balloon
// words and bookmarks. StopAll cuts through all of them at once.

namespace voxtrel::agent::stage {
namespace {

// How often the engine is asked what has been heard while it cannot tell when that will be.
constexpr Time kSpeechPoll{20};

// A voice is not mixed with sounds, but who asks it to speak does not wait for a long one to end.
constexpr Time kLongestWaitForSound{1000};

// Requests that take no time, one after the other, before the rest waits for the next tick.
constexpr int kMostRequestsATick = 100;

// Of a language identifier: the part without the country, and its value for English.
constexpr std::uint16_t kPrimaryLanguage = 0x3FF;
constexpr std::uint16_t kEnglish = 0x009;

Result Hidden() { return Result::Failure(ErrorCode::CharacterHidden, L"The character is hidden."); }

// The character's name in English, or else in the first language that the file has.
std::wstring NameOf(const acs::CharacterFile& file, const std::wstring& id)
{
    const auto english = std::find_if(file.localized.begin(), file.localized.end(), [](const auto& info) {
        return (info.language & kPrimaryLanguage) == kEnglish && !info.name.empty();
    });
    if (english != file.localized.end())
        return english->name;
    return file.localized.empty() || file.localized.front().name.empty() ? id : file.localized.front().name;
}

} // namespace

StageCharacter::StageCharacter(StageContext& stage, std::wstring id, acs::CharacterFile file)
    : stage_(stage), id_(std::move(id)), file_(std::move(file)),
      animator_(file_, stage.random, stage.trace,
                [this](int sound) { StartSound(sound, stage_.view.Now()); }),
      composer_(file_), window_(stage.view.MakeCharacterView(NameOf(file_, id_), *this)),
      balloonProperties_(file_.balloon),
      balloon_(stage.view, *window_, balloonProperties_, [this](bool shown) { TellBalloon(shown); }),
      idling_(file_, stage.random), size_{file_.width, file_.height}
{
    if (file_.voice)
        Ignore(SetTTSModeID(std::wstring(file_.voice->modeId.begin(), file_.voice->modeId.end())));
}

StageCharacter::~StageCharacter()
{
    Ignore(StopAll());
    balloon_.Dismiss();
}

void StageCharacter::Tick(Time now)
{
    animator_.Advance(now);
    if (Speaking())
        TakeSpeech(now);
    RunRequests(now);
    RunIdling(now);
    balloon_.Tick(now);
    Render();
}

Time StageCharacter::NextTick() const
{
    Time next = std::min(animator_.NextChange(), balloon_.NextChange());
    if (active_ && !Speaking() && !animator_.Running())
        next = std::min(next, stage_.view.Now() + kSpeechPoll); // waits for a sound or another's speech
    if (!active_ && !queue_.empty())
        next = Time::zero();
    if (Speaking())
        next = std::min(next, nextPoll_);
    if (MayIdle() && !animator_.Running())
        next = std::min(next, idleNext_ != nullptr || idlePlaying_ ? Time::zero() : idling_.DueAt());
    return next;
}

Result StageCharacter::Show() { return Enqueue({Request::Kind::Show, L"Show", nullptr, {}}); }

Result StageCharacter::Hide() { return Enqueue({Request::Kind::Hide, L"Hide", nullptr, {}}); }

Result StageCharacter::Play(std::wstring_view animation)
{
    const acs::Animation* found = FindAnimation(file_, animation);
    const std::wstring name(animation);
    Request request{Request::Kind::Play, L"Play " + name, found, {}};
    if (found == nullptr)
        return Refuse(request, Result::Failure(ErrorCode::NoSuchAnimation,
                                               L"The character has no animation named \"" + name + L"\"."));
    if (!Playable(*found))
        return Refuse(request, Result::Failure(ErrorCode::AnimationDamaged,
                                               L"The animation \"" + name + L"\" is damaged."));
    return Enqueue(std::move(request));
}

Result StageCharacter::Speak(std::wstring markup)
{
    return Enqueue({Request::Kind::Speak, L"Speak", nullptr, std::move(markup)});
}

Result StageCharacter::StopAll()
{
    const Time now = stage_.view.Now();
    // A Show at the head of an idle queue only waits for the tick: it counts as begun, so that a character
    // that was told to appear is not lost to the first text that is read.
    if (!active_ && !queue_.empty() && queue_.front().kind == Request::Kind::Show) {
        active_ = std::move(queue_.front());
        queue_.pop_front();
        Begin(now);
        if (active_)
            Perform(now);
    }
    std::deque<Request> removed;
    removed.swap(queue_);
    StopSounds(now);
    muted_ = true;
    if (active_)
        StopActive(now);
    for (const Request& request : removed)
        PostCompletion(request, Result::Failure(ErrorCode::RequestRemoved, L"The request was removed."));
    stage_.events.WithdrawBookmarks(this);
    Render();
    stage_.view.Wake();
    return Result::Success();
}

Result StageCharacter::Enqueue(Request request)
{
    queue_.push_back(std::move(request));
    stage_.view.Wake();
    return Result::Success();
}

// A request that cannot be carried out: the caller knows at once, and so does whoever follows the events.
// What is in the queue goes on.
Result StageCharacter::Refuse(const Request& request, Result result)
{
    PostCompletion(request, result);
    stage_.view.Wake();
    return result;
}

void StageCharacter::RunRequests(Time now)
{
    for (int run = 0; run < kMostRequestsATick; ++run) {
        if (!active_) {
            if (queue_.empty())
                return;
            active_ = std::move(queue_.front());
            queue_.pop_front();
            Begin(now);
        }
        if (active_ && phase_ == Phase::Leaving && !animator_.Running())
            Perform(now);
        if (active_ && phase_ == Phase::Performing)
            ContinuePerforming(now);
        if (active_)
            return;
    }
}

void StageCharacter::Begin(Time now)
{
    phase_ = Phase::Leaving;
    Tell("request-start", active_->name);
    stage_.events.Post([name = active_->name](ControlEvents& client) { client.RequestStart(name); });
    if (idling_.Active())
        StopSounds(now);
    StopIdling(now);
    muted_ = false;

    switch (active_->kind) {
    case Request::Kind::Show:
        if (visible_)
            return Complete(Result::Success(), now);
        animator_.Rest();
        break;
    case Request::Kind::Hide:
        if (!visible_)
            return Complete(Result::Success(), now);
        animator_.Leave(nullptr, now);
        break;
    case Request::Kind::Play:
        animator_.Leave(active_->animation, now);
        break;
    case Request::Kind::Speak:
        if (!visible_)
            return Complete(Hidden(), now);
        soundsEnd_ = std::min(soundsEnd_, now + kLongestWaitForSound);
        if (!CanSpeakHere())
            animator_.Leave(nullptr, now);
        break;
    }
}

void StageCharacter::Perform(Time now)
{
    switch (active_->kind) {
    case Request::Kind::Show:
        visible_ = true;
        if (!PlayOfState(L"Showing", now))
            ShowRestingPose();
        break;
    case Request::Kind::Hide:
        (void)PlayOfState(L"Hiding", now);
        break;
    case Request::Kind::Play:
        animator_.Play(*active_->animation, now);
        break;
    case Request::Kind::Speak:
        if (stage_.speaker != nullptr)
            return;
        if (!CanSpeakHere())
            (void)PlayOfState(L"Speaking", now);
        break;
    }
    phase_ = Phase::Performing;
}

void StageCharacter::ContinuePerforming(Time now)
{
    const bool speak = active_->kind == Request::Kind::Speak;
    if (animator_.Running() && !(speak && animator_.AtLastFrame()))
        return;
    if (active_->kind == Request::Kind::Hide)
        Disappear();
    if (now < soundsEnd_)
        return;
    if (speak)
        return StartSpeaking(now);
    Complete(active_->kind == Request::Kind::Play && !visible_ ? Hidden() : Result::Success(), now);
}

void StageCharacter::Complete(const Result& result, Time now)
{
    PostCompletion(*active_, result);
    active_.reset();
    StopIdling(now);
}

void StageCharacter::PostCompletion(const Request& request, const Result& result)
{
    Tell("request-complete", request.name, static_cast<std::int64_t>(result.code));
    stage_.events.Post(
        [name = request.name, result](ControlEvents& client) { client.RequestComplete(name, result); });
}

// A character that was appearing is there at once, one that was disappearing is gone; anything else is left
// on its own way out.
void StageCharacter::StopActive(Time now)
{
    const Result interrupted =
        Result::Failure(ErrorCode::InterruptedByApplication, L"The request was stopped by the program.");
    switch (active_->kind) {
    case Request::Kind::Show:
        if (active_->animation)
            animator_.ShowFinalPose(*active_->animation);
        break;
    case Request::Kind::Hide:
        Disappear();
        break;
    case Request::Kind::Play:
        animator_.Leave(nullptr, now);
        break;
    case Request::Kind::Speak:
        if (Speaking())
            Silence(now);
        else
            animator_.Leave(nullptr, now);
        break;
    }
    Complete(interrupted, now);
}

bool StageCharacter::PlayOfState(std::wstring_view state, Time now)
{
    const std::vector<const acs::Animation*> choices = AnimationsOfState(file_, state);
    if (choices.empty())
        return false;
    active_->animation = choices[stage_.random(static_cast<int>(choices.size()))];
    animator_.Play(*active_->animation, now);
    return true;
}

bool StageCharacter::CanSpeakHere() const
{
    return !animator_.Running() && animator_.Shown() != nullptr && HasMouths(*animator_.Shown());
}

void StageCharacter::StartSpeaking(Time now)
{
    phase_ = Phase::Speaking;
    stage_.speaker = this;
    if (speech::SoundPlayer* player = stage_.engine.Sounds())
        player->StopSounds();
    nextPoll_ = now + kSpeechPoll;
    if (!modeId_.empty() && !SameName(modeId_, stage_.engine.Mode()))
        Ignore(stage_.engine.SetMode(modeId_));

    ShowMouth(acs::Mouth::Closed);
    Render();
    balloon_.Begin(balloon_.WantsWholeText() ? stage_.balloonText(active_->markup, kBalloonTextLimit)
                                             : std::wstring());
    Tell("utterance", active_->markup);
    stage_.engine.Start(std::move(active_->markup));
}

void StageCharacter::TakeSpeech(Time now)
{
    using Kind = speech::SpeechEvent::Kind;
    for (const speech::SpeechEvent& event : stage_.engine.TakeDueEvents()) {
        switch (event.kind) {
        case Kind::BalloonWord:
            Tell("word", event.text);
            balloon_.Word(event.text);
            break;
        case Kind::LineBreak:
            balloon_.LineBreak();
            break;
        case Kind::Bookmark:
            Tell("bookmark", {}, event.number);
            stage_.events.PostBookmark(this, event.number);
            break;
        case Kind::Mouth:
            ShowMouth(event.mouth);
            break;
        case Kind::End:
            break;
        }
    }
    nextPoll_ = NextLookAtSpeech(now);
    if (stage_.engine.Speaking())
        return;
    stage_.speaker = nullptr;
    ShowMouth(acs::Mouth::Closed);
    balloon_.End(now);
    Complete(Result::Success(), now);
}

// The mouth moves with the voice: the look falls on the moment of the next event.
Time StageCharacter::NextLookAtSpeech(Time now) const
{
    const auto wait = stage_.engine.UntilNextEvent();
    if (!wait)
        return now + kSpeechPoll;
    return now + std::clamp(std::chrono::ceil<Time>(*wait), Time{1}, kSpeechPoll);
}

void StageCharacter::Silence(Time now)
{
    stage_.engine.Stop();
    stage_.speaker = nullptr;
    ShowMouth(acs::Mouth::Closed);
    balloon_.Stop(now);
}

bool StageCharacter::MayIdle() const
{
    return visible_ && !active_ && queue_.empty() && !pointer_.Dragging();
}

void StageCharacter::RunIdling(Time now)
{
    if (!MayIdle() || animator_.Running())
        return;
    if (std::exchange(idlePlaying_, false))
        idling_.Pause(now);
    if (idleNext_ == nullptr) {
        if (now < idling_.DueAt())
            return;
        if (!idling_.Active())
            stage_.events.Post([](ControlEvents& client) { client.IdleStart(); });
        idleNext_ = &idling_.Choose(now);
        animator_.Leave(idleNext_, now);
    }
    if (animator_.Running())
        return;
    muted_ = false;
    animator_.Play(*std::exchange(idleNext_, nullptr), now);
    idlePlaying_ = true;
}

void StageCharacter::StartSound(int sound, Time now)
{
    speech::SoundPlayer* player = stage_.engine.Sounds();
    if (player == nullptr || !soundEffects_ || muted_ || !visible_)
        return;
    Tell("sound", {}, sound);
    Time length = player->StartSound(file_.sounds->Read(static_cast<std::size_t>(sound)));
    if (active_ && active_->kind == Request::Kind::Speak)
        length = std::min(length, kLongestWaitForSound);
    soundsEnd_ = std::max(soundsEnd_, now + length);
}

void StageCharacter::StopSounds(Time now)
{
    if (now < std::exchange(soundsEnd_, now))
        stage_.engine.Sounds()->StopSounds();
}

void StageCharacter::StopIdling(Time now)
{
    idleNext_ = nullptr;
    idlePlaying_ = false;
    if (idling_.Interrupt(now))
        stage_.events.Post([](ControlEvents& client) { client.IdleComplete(); });
}

void StageCharacter::Tell(std::string_view event, std::wstring_view text, std::int64_t number) const
{
    if (stage_.trace)
        stage_.trace({event, text, number});
}

} // namespace voxtrel::agent::stage
