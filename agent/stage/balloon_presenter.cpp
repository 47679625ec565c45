#include "agent/stage/balloon_presenter.h"

#include <algorithm>
#include <utility>

namespace voxtrel::agent::stage {
namespace {

constexpr std::size_t kLinesKept = 512;

// A wrapped word is looked for in the line of the word before and this many lines after it.
constexpr std::size_t kLinesSearched = 3;

// Taken while no monitor shows the character.
constexpr Rect kAnyWorkArea{0, 0, 1024, 768};

} // namespace

BalloonPresenter::BalloonPresenter(const StageView& view, CharacterView& window,
                                   const BalloonProperties& properties, std::function<void(bool)> told)
    : view_(view), window_(window), properties_(properties), told_(std::move(told))
{
}

bool BalloonPresenter::WantsWholeText() const
{
    return properties_.Has(balloon_style::kOn) &&
           (properties_.Has(balloon_style::kSizeToText) || !properties_.Has(balloon_style::kAutoPace));
}

void BalloonPresenter::Begin(std::wstring_view wholeText)
{
    Dismiss();
    if (!properties_.Has(balloon_style::kOn))
        return;

    font_ = properties_.Font();
    metrics_ = MetricsAt(view_.PixelScale());
    lineHeight_ = std::max(1, view_.LineHeight(font_));
    const int widthWanted =
        AverageCharacterWidth(view_, font_) * properties_.CharactersPerLine() + 2 * metrics_.paddingX;
    bodyWidth_ = std::min(widthWanted, WorkArea().width);

    BalloonLines whole(view_, font_, bodyWidth_ - 2 * metrics_.paddingX, kLinesKept);
    whole.AddText(wholeText);
    wantedLines_ = properties_.Has(balloon_style::kSizeToText) ? static_cast<int>(whole.Lines().size())
                                                               : properties_.Lines();
    wantedLines_ = std::max(wantedLines_, 1);

    pacing_ = properties_.Has(balloon_style::kAutoPace) ? Pacing::Words : Pacing::WholeText;
    if (pacing_ == Pacing::WholeText)
        lines_.emplace(std::move(whole));
    else
        lines_.emplace(view_, font_, bodyWidth_ - 2 * metrics_.paddingX, kLinesKept);
    top_ = wordLine_ = wordColumn_ = 0;
    Refresh();
}

void BalloonPresenter::Word(std::wstring_view word)
{
    if (!lines_)
        return;
    if (pacing_ == Pacing::WholeText) {
        FollowWord(word);
    } else {
        lines_->AddWord(word);
        wordLine_ = lines_->Dropped() + lines_->Lines().size() - (lines_->Empty() ? 0 : 1);
    }
    Refresh();
}

void BalloonPresenter::LineBreak()
{
    if (lines_ && pacing_ == Pacing::Words)
        lines_->BreakLine();
}

void BalloonPresenter::End(Time now)
{
    if (lines_ && properties_.Has(balloon_style::kAutoHide))
        hideAt_ = now + kAutoHideDelay;
}

void BalloonPresenter::Stop(Time now)
{
    if (properties_.Has(balloon_style::kAutoHide))
        End(now);
    else
        Dismiss();
}

void BalloonPresenter::Dismiss()
{
    lines_.reset();
    hideAt_ = kNever;
    SetVisible(false);
}

void BalloonPresenter::Follow(const Rect& figure)
{
    if (figure == figure_)
        return;
    figure_ = figure;
    Refresh();
}

void BalloonPresenter::Tick(Time now)
{
    if (now >= hideAt_)
        Dismiss();
}

// Keeps the spoken word in sight when the whole text stands in the balloon. What lies behind the part of the
// text that was laid out in advance is added word by word.
void BalloonPresenter::FollowWord(std::wstring_view word)
{
    const std::wstring_view piece = word.substr(0, word.find_first_of(L" \t"));
    const std::size_t end = lines_->Dropped() + lines_->Lines().size();
    for (std::size_t line = wordLine_; line < std::min(end, wordLine_ + kLinesSearched); ++line) {
        const std::wstring& text = lines_->Lines()[line - lines_->Dropped()];
        const std::size_t found = text.find(piece, line == wordLine_ ? wordColumn_ : 0);
        if (found == std::wstring::npos)
            continue;
        wordLine_ = line;
        wordColumn_ = found + piece.size();
        return;
    }
    if (wordLine_ + kLinesSearched < end)
        return;
    lines_->AddWord(word);
    wordLine_ = lines_->Dropped() + lines_->Lines().size() - 1;
    wordColumn_ = lines_->Lines().back().size();
}

void BalloonPresenter::Refresh()
{
    const bool somethingToShow = lines_ && !lines_->Empty();
    const std::optional<Rect> workArea = somethingToShow ? view_.WorkAreaAt(figure_) : std::nullopt;
    if (!workArea)
        return SetVisible(false);

    const auto shown = static_cast<std::size_t>(ShownLines(*workArea));
    if (wordLine_ >= top_ + shown)
        top_ = wordLine_ - shown + 1;
    top_ = std::max(top_, lines_->Dropped());

    BalloonPicture picture = Draw(*workArea);
    if (!visible_ || picture_ != picture) {
        window_.ShowBalloon(picture);
        picture_ = std::move(picture);
    }
    SetVisible(true);
}

BalloonPicture BalloonPresenter::Draw(const Rect& workArea) const
{
    const int shown = ShownLines(workArea);
    const Size size{std::min(bodyWidth_, workArea.width),
                    std::min(shown * lineHeight_ + 2 * metrics_.paddingY, workArea.height)};
    const BalloonPlace place = PlaceBalloon(size, figure_, workArea, metrics_);

    BalloonPicture picture;
    picture.body = place.body;
    picture.wedgeEdge = place.wedgeEdge;
    picture.wedgeCenter = place.wedgeCenter;
    picture.wedgeWidth = metrics_.wedgeWidth;
    picture.wedgeLength = metrics_.wedgeLength;
    picture.cornerRadius = metrics_.cornerRadius;
    picture.text = {metrics_.paddingX, metrics_.paddingY};
    picture.lineHeight = lineHeight_;
    picture.font = font_;
    picture.colors = properties_.Colors();
    const auto& lines = lines_->Lines();
    for (std::size_t i = top_ - lines_->Dropped();
         i < lines.size() && std::cmp_less(picture.lines.size(), shown); ++i)
        picture.lines.push_back(lines[i]);
    return picture;
}

void BalloonPresenter::SetVisible(bool visible)
{
    if (visible == visible_)
        return;
    visible_ = visible;
    if (!visible)
        window_.HideBalloon();
    told_(visible);
}

int BalloonPresenter::LinesThatFit(int height) const
{
    return std::max(1, (height - 2 * metrics_.paddingY) / lineHeight_);
}

// A balloon sized to a long text is never higher than what fits above or below the character wherever it
// stands, and scrolls like any other.
int BalloonPresenter::ShownLines(const Rect& workArea) const
{
    const int most = LinesThatFit(workArea.height);
    if (!properties_.Has(balloon_style::kSizeToText))
        return std::min(wantedLines_, most);
    const int room = (workArea.height - figure_.height) / 2 - metrics_.wedgeLength - metrics_.gap;
    const int comfortable = std::max(LinesThatFit(room), properties_.Lines());
    return std::min({wantedLines_, most, comfortable});
}

Rect BalloonPresenter::WorkArea() const { return view_.WorkAreaAt(figure_).value_or(kAnyWorkArea); }

} // namespace voxtrel::agent::stage
