#include "agent/stage/animator.h"

#include "agent/stage/names.h"

#include <utility>

// How an animation runs.
//
// Each frame is held for its duration; then one draw decides between its branches and the next frame in
// order. Frames without pictures and without duration are passed through and never shown. After the last
// frame the last picture stays. Whatever plays next first leaves the animation: by its return animation, or
// by a walk along the exit frames that starts from the frame last shown, since an author may end an animation
// with an invisible frame and chain the exits backwards from the visible ones.

namespace voxtrel::agent::stage {
namespace {

// Frames that take no time, one after the other, before the animation is taken for an endless loop.
constexpr int kMostInstantFrames = 1000;

// Rounds through all frames that a way out may take before it is taken for an endless loop.
constexpr int kMostExitRounds = 3;

// After a longer gap than this (the machine slept) the animation goes on where it was instead of catching up.
constexpr Time kMostCatchUp{1000};

Time DurationOf(const acs::Frame& frame) { return Time{frame.duration > 0 ? frame.duration * 10 : 0}; }

bool IsShown(const acs::Frame& frame) { return !frame.images.empty() || frame.duration > 0; }

int FrameCount(const acs::Animation& animation) { return static_cast<int>(animation.frames.size()); }

} // namespace

Animator::Animator(const acs::CharacterFile& file, Random random, Trace trace, SoundStarter startSound)
    : file_(file), random_(std::move(random)), trace_(std::move(trace)), startSound_(std::move(startSound))
{
}

void Animator::Play(const acs::Animation& animation, Time now) { Begin(animation, Mode::Playing, 0, now); }

void Animator::Leave(const acs::Animation* next, Time now)
{
    if (mode_ == Mode::Returning || mode_ == Mode::Exiting)
        return;

    mode_ = Mode::Resting;
    if (!std::exchange(toBeLeft_, false))
        return;
    if (animation_->transition == acs::Transition::ReturnAnimation) {
        const acs::Animation* way = FindAnimation(file_, animation_->returnAnimation);
        if (way != nullptr && way != next && Playable(*way))
            Begin(*way, Mode::Returning, 0, now);
    } else if (animation_->transition == acs::Transition::ExitBranches && lastShown_) {
        mode_ = Mode::Exiting;
        exitSteps_ = 0;
        if (const std::optional<int> first = NextOnTheWayOut(*lastShown_))
            Enter(*first, now);
        else
            Finish();
    }
}

void Animator::ShowFinalPose(const acs::Animation& animation)
{
    for (int frame = FrameCount(animation) - 1; frame >= 0; --frame) {
        if (!animation.frames[frame].images.empty())
            return RestAt(animation, frame);
    }
}

void Animator::ShowFirstPose(const acs::Animation& animation)
{
    for (int frame = 0; frame < FrameCount(animation); ++frame) {
        if (!animation.frames[frame].images.empty())
            return RestAt(animation, frame);
    }
}

void Animator::Advance(Time now)
{
    if (Running() && now - frameEnds_ > kMostCatchUp)
        frameEnds_ = now;
    while (Running() && frameEnds_ <= now) {
        if (const std::optional<int> next = Next(frame_))
            Enter(*next, frameEnds_);
        else
            Finish();
    }
}

bool Animator::AtLastFrame() const
{
    return mode_ == Mode::Playing && frame_ + 1 == FrameCount(*animation_) &&
           animation_->frames[frame_].branches.empty();
}

void Animator::Begin(const acs::Animation& animation, Mode mode, int frame, Time now)
{
    animation_ = &animation;
    mode_ = mode;
    lastShown_.reset();
    toBeLeft_ = mode == Mode::Playing && animation.transition != acs::Transition::None;
    if (trace_)
        trace_({"animation", animation.name});
    Enter(frame, now);
}

void Animator::Enter(int frame, Time now)
{
    for (int step = 0; step < kMostInstantFrames; ++step) {
        frame_ = frame;
        const acs::Frame& entered = animation_->frames[frame];
        if (IsShown(entered)) {
            Show(frame);
            // The frames of the way out are those of the way in, whose sounds have been heard.
            if (entered.sound && startSound_ && mode_ != Mode::Exiting)
                startSound_(*entered.sound);
        }
        if (entered.duration > 0) {
            frameEnds_ = now + DurationOf(entered);
            return;
        }
        const std::optional<int> next = Next(frame);
        if (!next)
            break;
        frame = *next;
    }
    Finish();
}

// An animation played to its end still has to be left; one that was being left is done with.
void Animator::Finish() { mode_ = Mode::Resting; }

void Animator::Rest()
{
    mode_ = Mode::Resting;
    toBeLeft_ = false;
}

void Animator::RestAt(const acs::Animation& animation, int frame)
{
    Rest();
    animation_ = &animation;
    Show(frame);
}

void Animator::Show(int frame)
{
    lastShown_ = frame;
    shown_ = &animation_->frames[frame];
    if (trace_)
        trace_({"frame", animation_->name, frame});
}

std::optional<int> Animator::Next(int frame)
{
    return mode_ == Mode::Exiting ? NextOnTheWayOut(frame) : NextByBranches(frame);
}

std::optional<int> Animator::NextByBranches(int frame)
{
    const acs::Frame& current = animation_->frames[frame];
    if (!current.branches.empty()) {
        const int draw = random_(100);
        int sum = 0;
        for (const acs::Branch& branch : current.branches) {
            sum += branch.probability;
            if (draw >= sum)
                continue;
            if (branch.target >= 0 && branch.target < FrameCount(*animation_))
                return branch.target;
            break;
        }
    }
    if (frame + 1 < FrameCount(*animation_))
        return frame + 1;
    return std::nullopt;
}

std::optional<int> Animator::NextOnTheWayOut(int frame)
{
    const bool first = exitSteps_ == 0;
    const bool last = frame + 1 == FrameCount(*animation_);
    if (++exitSteps_ > kMostExitRounds * FrameCount(*animation_) || (last && !first))
        return std::nullopt;

    const std::optional<int>& exit = animation_->frames[frame].exitFrame;
    if (exit && *exit >= 0 && *exit < FrameCount(*animation_))
        return exit;
    if (last)
        return std::nullopt;
    return NextByBranches(frame);
}

} // namespace voxtrel::agent::stage
