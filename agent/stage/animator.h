#pragma once

#include "agent/acs/character_file.h"
#include "agent/stage/random.h"
#include "agent/stage/time.h"
#include "agent/stage/trace.h"

#include <functional>
#include <optional>

namespace voxtrel::agent::stage {

// Moves through the frames of one animation at a time and knows how to leave it before the next.
class Animator {
public:
    // Told of the sound of each frame that an animation comes to: its index in the file.
    using SoundStarter = std::function<void(int sound)>;

    // The file must outlive the animator. startSound may be empty.
    Animator(const acs::CharacterFile& file, Random random, Trace trace, SoundStarter startSound = {});

    // Begins a playable animation at its first frame. What was played before is cut off: Leave comes first.
    void Play(const acs::Animation& animation, Time now);

    // Begins to leave what was played last, by its return animation or its exit frames. next is what will be
    // played afterwards, or null: an animation is not left by its return animation when that is what follows.
    void Leave(const acs::Animation* next, Time now);

    // Shows the pose in which an animation ends, and rests there with nothing to leave.
    void ShowFinalPose(const acs::Animation& animation);

    // Shows the pose in which an animation begins, in the same way.
    void ShowFirstPose(const acs::Animation& animation);

    // Stops where it is, with nothing to leave.
    void Rest();

    // Moves to the frame of this moment.
    void Advance(Time now);

    // An animation, or the way out of one, is under way.
    bool Running() const { return mode_ != Mode::Resting; }

    // The animation under way has come to a last frame from which it can only end.
    bool AtLastFrame() const;

    // When Advance has something to do; kNever at rest.
    Time NextChange() const { return Running() ? frameEnds_ : kNever; }

    // The frame on the screen; null before the first.
    const acs::Frame* Shown() const { return shown_; }

private:
    enum class Mode { Resting, Playing, Returning, Exiting };

    void Begin(const acs::Animation& animation, Mode mode, int frame, Time now);
    void Enter(int frame, Time now);
    void Finish();
    void RestAt(const acs::Animation& animation, int frame);
    void Show(int frame);
    std::optional<int> Next(int frame);
    std::optional<int> NextByBranches(int frame);
    std::optional<int> NextOnTheWayOut(int frame);

    const acs::CharacterFile& file_;
    Random random_;
    Trace trace_;
    SoundStarter startSound_;
    Mode mode_ = Mode::Resting;
    const acs::Animation* animation_ = nullptr;
    bool toBeLeft_ = false;
    int frame_ = 0;
    std::optional<int> lastShown_; // of animation_
    int exitSteps_ = 0;
    Time frameEnds_{0};
    const acs::Frame* shown_ = nullptr;
};

} // namespace voxtrel::agent::stage
