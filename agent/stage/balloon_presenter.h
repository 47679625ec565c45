#pragma once

#include "agent/stage/balloon_layout.h"
#include "agent/stage/balloon_lines.h"
#include "agent/stage/balloon_properties.h"
#include "agent/stage/stage_view.h"
#include "agent/stage/time.h"

#include <functional>
#include <optional>
#include <string_view>

namespace voxtrel::agent::stage {

// How long a balloon that hides itself stays after the last word.
inline constexpr Time kAutoHideDelay{2000};

// The most of an utterance's text that a balloon looks at in advance, in characters.
inline constexpr std::size_t kBalloonTextLimit = 4000;

// Shows the words of one utterance after the other in the balloon, paced or at once, and hides it when its
// time has come.
class BalloonPresenter {
public:
    // told hears of each showing (true) and hiding (false). What is passed must outlive the presenter.
    BalloonPresenter(const StageView& view, CharacterView& window, const BalloonProperties& properties,
                     std::function<void(bool shown)> told);

    // Whether Begin wants to know the text of an utterance in advance.
    bool WantsWholeText() const;

    // An utterance begins: the text before it goes. wholeText may be empty unless WantsWholeText.
    void Begin(std::wstring_view wholeText);
    void Word(std::wstring_view word);
    void LineBreak();

    // The utterance was said to its end, or silenced before.
    void End(Time now);
    void Stop(Time now);

    // Hides the balloon now; what is left of the utterance is not shown either.
    void Dismiss();

    // Where the character is to be seen now.
    void Follow(const Rect& figure);

    bool Visible() const { return visible_; }
    void Tick(Time now);
    Time NextChange() const { return hideAt_; }

private:
    enum class Pacing { Words, WholeText };

    void FollowWord(std::wstring_view word);
    void Refresh();
    BalloonPicture Draw(const Rect& workArea) const;
    void SetVisible(bool visible);
    int LinesThatFit(int height) const;
    int ShownLines(const Rect& workArea) const;
    Rect WorkArea() const;

    const StageView& view_;
    CharacterView& window_;
    const BalloonProperties& properties_;
    std::function<void(bool)> told_;

    Rect figure_;
    std::optional<BalloonLines> lines_; // of the utterance begun last, while it may be shown
    Pacing pacing_ = Pacing::Words;
    FontSpec font_;
    BalloonMetrics metrics_;
    int bodyWidth_ = 0;
    int lineHeight_ = 1;
    int wantedLines_ = 1;
    std::size_t top_ = 0;        // the first line shown; lines are counted with those dropped
    std::size_t wordLine_ = 0;   // where the word being spoken stands
    std::size_t wordColumn_ = 0; // behind it
    bool visible_ = false;
    Time hideAt_ = kNever; // kNever without lines
    std::optional<BalloonPicture> picture_;
};

} // namespace voxtrel::agent::stage
