#pragma once

#include "agent/control.h"
#include "agent/speech/speech_engine.h"
#include "agent/stage/animator.h"
#include "agent/stage/balloon_presenter.h"
#include "agent/stage/balloon_properties.h"
#include "agent/stage/event_queue.h"
#include "agent/stage/frame_composer.h"
#include "agent/stage/idling.h"
#include "agent/stage/pointer_tracker.h"
#include "agent/stage/request.h"
#include "agent/stage/stage_view.h"
#include "agent/stage/trace.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace voxtrel::agent::stage {

// What the characters of a control share. Everything referred to outlives them.
struct StageContext {
    StageView& view;
    speech::SpeechEngine& engine;
    EventQueue& events;
    Random random;
    Trace trace;
    // The text that a markup shows in the balloon, up to a length.
    std::function<std::wstring(std::wstring_view markup, std::size_t maxLength)> balloonText;
    // Whose utterance the engine speaks; null when nobody's.
    const void* speaker = nullptr;
};

// A loaded character: takes requests and carries them out in their order, one tick after the other.
class StageCharacter : public Character, private PointerInput {
public:
    StageCharacter(StageContext& stage, std::wstring id, acs::CharacterFile file);
    // Silences and hides at once; requests that are outstanding end as interrupted.
    ~StageCharacter() override;

    const std::wstring& Id() const { return id_; }
    const std::string& Guid() const { return file_.guid; }

    void Tick(Time now);
    Time NextTick() const;

    Result Show() override;
    Result Hide() override;
    Result Play(std::wstring_view animation) override;
    Result Speak(std::wstring markup) override;
    Result StopAll() override;

    long Top() const override { return top_; }
    long Left() const override { return left_; }
    long Height() const override { return size_.height; }
    long Width() const override { return size_.width; }
    Result SetTop(long pixels) override;
    Result SetLeft(long pixels) override;
    Result SetHeight(long pixels) override;
    Result SetWidth(long pixels) override;
    long ShownHeight() const override { return ShownSize().height; }
    long ShownWidth() const override { return ShownSize().width; }

    std::wstring TTSModeID() const override;
    Result SetTTSModeID(std::wstring_view id) override;
    bool SoundEffectsOn() const override { return soundEffects_; }
    Result SetSoundEffectsOn(bool on) override;
    bool Visible() const override { return visible_; }
    Balloon& GetBalloon() override { return balloonProperties_; }

private:
    // Of the request that is being carried out.
    enum class Phase { Leaving, Performing, Speaking };

    void Press(int button, int shift, Point at) override;
    void Move(Point at) override;
    void Release(int button, int shift, Point at) override;
    void DoublePress(int button, int shift, Point at) override;
    void PressLost() override;
    void BalloonPress() override;
    void Handle(const PointerTracker::Recognized& recognized);

    Result Enqueue(Request request);
    Result Refuse(const Request& request, Result result);
    void RunRequests(Time now);
    void Begin(Time now);
    void Perform(Time now);
    void ContinuePerforming(Time now);
    void Complete(const Result& result, Time now);
    void PostCompletion(const Request& request, const Result& result);
    void StopActive(Time now);

    // For the active request. False when the state has no animation.
    bool PlayOfState(std::wstring_view state, Time now);
    void ShowRestingPose();
    void Disappear();

    bool CanSpeakHere() const;
    void StartSpeaking(Time now);
    void TakeSpeech(Time now);
    Time NextLookAtSpeech(Time now) const;
    void Silence(Time now);
    bool Speaking() const { return active_ && phase_ == Phase::Speaking; }
    void ShowMouth(acs::Mouth mouth);

    void StartSound(int sound, Time now);
    void StopSounds(Time now);

    bool MayIdle() const;
    void RunIdling(Time now);
    void StopIdling(Time now);

    Point Position() const;
    Size ShownSize() const;
    void FindFigure();
    Result MoveTo(long left, long top);
    Result Resize(long width, long height);
    void Render();
    void FollowFigure();
    void TellBalloon(bool shown);
    void Tell(std::string_view event, std::wstring_view text, std::int64_t number = 0) const;

    StageContext& stage_;
    std::wstring id_;
    acs::CharacterFile file_;
    Animator animator_;
    FrameComposer composer_;
    std::unique_ptr<CharacterView> window_;
    BalloonProperties balloonProperties_;
    BalloonPresenter balloon_;
    Idling idling_;
    PointerTracker pointer_;

    std::deque<Request> queue_;
    std::optional<Request> active_;
    Phase phase_ = Phase::Leaving;
    const acs::Animation* idleNext_ = nullptr; // to be played once the animation before is left
    bool idlePlaying_ = false;
    Time nextPoll_{0}; // of the speech engine, in Phase::Speaking

    std::wstring modeId_;
    bool soundEffects_ = true;
    bool muted_ = false; // from a StopAll to whatever is begun next
    Time soundsEnd_{0};  // of the character's sounds
    bool visible_ = false;
    long left_ = 0;
    long top_ = 0;
    Size size_;
    Point dragOrigin_; // of the frame, when the press began

    std::optional<acs::Mouth> mouth_;
    const acs::Frame* mouthFrame_ = nullptr;
    std::shared_ptr<const Picture> picture_; // in the window; null while it is hidden
    RowRange figureRows_;                    // of the picture that shows something, in pixels of the screen
};

} // namespace voxtrel::agent::stage
