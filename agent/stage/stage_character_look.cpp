#include "agent/stage/stage_character.h"

#include "agent/stage/lip_sync.h"
#include "agent/stage/names.h"

#include <algorithm>
#include <cmath>
#include <utility>

// What is to be seen of a character, where it stands, and what the pointer does to it.

namespace voxtrel::agent::stage {
namespace {

constexpr long kLargestSize = 4096; // pixels

// Windows are placed by 16-bit numbers on some systems.
constexpr long kFarthest = 30'000;

Result OutOfRange()
{
    return Result::Failure(ErrorCode::DataInvalid, L"The size of a character must be from 1 to 4096 pixels.");
}

} // namespace

Result StageCharacter::SetTop(long pixels) { return MoveTo(left_, pixels); }

Result StageCharacter::SetLeft(long pixels) { return MoveTo(pixels, top_); }

Result StageCharacter::SetHeight(long pixels) { return Resize(size_.width, pixels); }

Result StageCharacter::SetWidth(long pixels) { return Resize(pixels, size_.height); }

std::wstring StageCharacter::TTSModeID() const { return modeId_.empty() ? stage_.engine.Mode() : modeId_; }

Result StageCharacter::SetTTSModeID(std::wstring_view id)
{
    Result result = stage_.engine.SetMode(id);
    if (result.Ok())
        modeId_ = id;
    return result;
}

Result StageCharacter::SetSoundEffectsOn(bool on)
{
    soundEffects_ = on;
    if (!on)
        StopSounds(stage_.view.Now());
    return Result::Success();
}

// A character without an animation for appearing stands there in the pose it speaks in.
void StageCharacter::ShowRestingPose()
{
    std::vector<const acs::Animation*> poses = AnimationsOfState(file_, L"Speaking");
    if (const acs::Animation* rest = FindAnimation(file_, L"RestPose"); rest != nullptr && Playable(*rest))
        poses.push_back(rest);
    if (!poses.empty())
        animator_.ShowFinalPose(*poses.front());
}

void StageCharacter::Disappear()
{
    animator_.Rest();
    visible_ = false;
    balloon_.Dismiss();
}

void StageCharacter::ShowMouth(acs::Mouth mouth)
{
    if (mouth_ == mouth && mouthFrame_ == animator_.Shown())
        return;
    mouth_ = mouth;
    mouthFrame_ = animator_.Shown();
    Tell("mouth", {}, static_cast<int>(mouth));
}

Point StageCharacter::Position() const
{
    return {static_cast<int>(std::clamp(left_, -kFarthest, kFarthest)),
            static_cast<int>(std::clamp(top_, -kFarthest, kFarthest))};
}

// The size that was set is that of a screen of 96 dots an inch.
Size StageCharacter::ShownSize() const
{
    const double scale = stage_.view.PixelScale();
    return {std::max(1, static_cast<int>(std::lround(size_.width * scale))),
            std::max(1, static_cast<int>(std::lround(size_.height * scale)))};
}

Result StageCharacter::MoveTo(long left, long top)
{
    if (left == left_ && top == top_)
        return Result::Success();
    left_ = left;
    top_ = top;
    if (picture_ != nullptr)
        window_->MoveFrame(Position());
    FollowFigure();
    stage_.view.Wake();
    return Result::Success();
}

Result StageCharacter::Resize(long width, long height)
{
    if (width < 1 || width > kLargestSize || height < 1 || height > kLargestSize)
        return OutOfRange();
    size_ = {static_cast<int>(width), static_cast<int>(height)};
    Render();
    FindFigure();
    stage_.view.Wake();
    return Result::Success();
}

// A mouth belongs to the frame in which it was opened: with the next frame it is gone.
void StageCharacter::Render()
{
    if (!visible_) {
        if (std::exchange(picture_, nullptr) != nullptr)
            window_->HideFrame();
        return;
    }
    if (mouthFrame_ != animator_.Shown())
        mouth_.reset();
    const Size size = ShownSize();
    const int detail = stage_.view.PictureDetail();
    std::shared_ptr<const Picture> picture =
        composer_.Compose(animator_.Shown(), mouth_, {size.width * detail, size.height * detail});
    if (picture == picture_)
        return;
    picture_ = std::move(picture);
    const Point at = Position();
    window_->ShowFrame(picture_, {at.x, at.y, size.width, size.height});
    // A balloon that is up stays where it is while the character moves below it.
    if (!balloon_.Visible())
        FindFigure();
}

void StageCharacter::FindFigure()
{
    if (picture_ != nullptr) {
        const int detail = stage_.view.PictureDetail();
        const RowRange rows = RowsInUse(*picture_);
        figureRows_ = {rows.first / detail, (rows.end + detail - 1) / detail};
    }
    FollowFigure();
}

void StageCharacter::FollowFigure()
{
    const Point at = Position();
    const Size size = ShownSize();
    const bool empty = figureRows_.end == figureRows_.first;
    const RowRange rows = empty ? RowRange{0, size.height} : figureRows_;
    balloon_.Follow({at.x, at.y + rows.first, size.width, rows.end - rows.first});
}

void StageCharacter::TellBalloon(bool shown)
{
    Tell(shown ? "balloon-show" : "balloon-hide", {});
    stage_.events.Post(
        [shown](ControlEvents& client) { shown ? client.BalloonShow() : client.BalloonHide(); });
}

void StageCharacter::Press(int button, int shift, Point at)
{
    if (!pointer_.Dragging())
        dragOrigin_ = Position();
    Handle(pointer_.Press(button, shift, at));
}

void StageCharacter::Move(Point at) { Handle(pointer_.Move(at)); }

// On a busy desktop the release may be all that one hears of a drag.
void StageCharacter::Release(int button, int shift, Point at)
{
    Handle(pointer_.Move(at));
    Handle(pointer_.Release(button, shift, at));
}

void StageCharacter::DoublePress(int button, int shift, Point at)
{
    if (!pointer_.Dragging())
        dragOrigin_ = Position();
    Handle(pointer_.DoublePress(button, shift, at));
}

void StageCharacter::PressLost() { Handle(pointer_.Lost()); }

void StageCharacter::BalloonPress()
{
    balloon_.Dismiss();
    stage_.view.Wake();
}

void StageCharacter::Handle(const PointerTracker::Recognized& recognized)
{
    using Gesture = PointerTracker::Gesture;
    if (recognized.gesture == Gesture::None)
        return;
    if (recognized.gesture != Gesture::Drag && !Speaking())
        balloon_.Dismiss();
    if (pointer_.Dragging() || recognized.gesture == Gesture::DragComplete) {
        const Point distance = pointer_.Distance();
        Ignore(MoveTo(dragOrigin_.x + distance.x, dragOrigin_.y + distance.y));
    }
    if (recognized.gesture == Gesture::Drag)
        return;

    if (recognized.gesture == Gesture::DragStart || recognized.gesture == Gesture::DragComplete) {
        const Time now = stage_.view.Now();
        if (idling_.Active())
            animator_.Leave(nullptr, now);
        StopIdling(now);
    }
    stage_.events.Post(
        [event = PointerEvent{id_, recognized.button, recognized.shift, recognized.at.x, recognized.at.y},
         gesture = recognized.gesture](ControlEvents& client) {
            if (gesture == Gesture::Click)
                client.Click(event);
            else if (gesture == Gesture::DblClick)
                client.DblClick(event);
            else if (gesture == Gesture::DragStart)
                client.DragStart(event);
            else
                client.DragComplete(event);
        });
    stage_.view.Wake();
}

} // namespace voxtrel::agent::stage
