#include "agent/view/desktop_stage_view.h"

#include "agent/view/balloon_window.h"
#include "agent/view/native_window.h"

#include <wx/bitmap.h>
#include <wx/display.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace voxtrel::agent::view {
namespace {

using stage::Time;

// The timer while a tick is at work: a client's handler may open a dialog, and the stage goes on behind it.
constexpr int kMeanwhileMs = 30;

// The longest that the timer is set to, in milliseconds.
constexpr Time kLongestSleep{60'000};

// The two windows of a character.
class DesktopCharacterView : public stage::CharacterView {
public:
    DesktopCharacterView(const wxString& name, stage::PointerInput& input, const MenuHook& menu)
        : character_(new CharacterWindow(name, input, menu)), input_(input)
    {
    }

    // Windows may be at work on an event of their own: the toolkit deletes them when they are done.
    ~DesktopCharacterView() override
    {
        Remove(character_);
        if (balloon_ != nullptr)
            Remove(balloon_);
    }
    DesktopCharacterView(const DesktopCharacterView&) = delete;
    DesktopCharacterView& operator=(const DesktopCharacterView&) = delete;

    void ShowFrame(std::shared_ptr<const stage::Picture> picture, const stage::Rect& place) override
    {
        character_->ShowFrame(std::move(picture), wxRect(place.x, place.y, place.width, place.height));
    }
    void MoveFrame(stage::Point topLeft) override { character_->MoveFrame(wxPoint(topLeft.x, topLeft.y)); }
    void HideFrame() override { character_->HideFrame(); }

    void ShowBalloon(const stage::BalloonPicture& balloon) override
    {
        if (balloon_ == nullptr)
            balloon_ = new BalloonWindow(input_);
        balloon_->ShowBalloon(balloon, std::max(1.0, FontScale()));
    }

    void HideBalloon() override
    {
        if (balloon_ != nullptr)
            balloon_->Hide();
    }

private:
    static void Remove(wxFrame* window)
    {
        if (window->HasCapture())
            window->ReleaseMouse();
        window->SetEvtHandlerEnabled(false); // its input is about to go
        window->Hide();
        window->Destroy();
    }

    CharacterWindow* character_; // owned by the toolkit, as every window
    BalloonWindow* balloon_ = nullptr;
    stage::PointerInput& input_;
};

} // namespace

DesktopStageView::DesktopStageView(ViewOptions options) : options_(std::move(options))
{
    pixel_.SetScaleFactor(TextBitmapScale());
    measuring_.SelectObject(pixel_);
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { OnTimer(); });
}

int DesktopStageView::Width(const stage::FontSpec& font, std::wstring_view text) const
{
    return Measuring(font).GetTextExtent(wxString(text.data(), text.size())).GetWidth();
}

int DesktopStageView::LineHeight(const stage::FontSpec& font) const
{
    return Measuring(font).GetCharHeight();
}

Time DesktopStageView::Now() const
{
    return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now().time_since_epoch());
}

void DesktopStageView::Drive(stage::Ticker* ticker)
{
    ticker_ = ticker;
    Wake();
}

void DesktopStageView::Wake()
{
    const Time next = ticker_ != nullptr ? ticker_->NextTick() : stage::kNever;
    if (next == stage::kNever) {
        timer_.Stop();
        return;
    }
    const Time wait = std::clamp(next - Now(), Time{1}, kLongestSleep);
    timer_.StartOnce(static_cast<int>(wait.count()));
}

std::unique_ptr<stage::CharacterView> DesktopStageView::MakeCharacterView(std::wstring_view name,
                                                                          stage::PointerInput& input)
{
    return std::make_unique<DesktopCharacterView>(wxString(name.data(), name.size()), input, options_.menu);
}

std::optional<stage::Rect> DesktopStageView::WorkAreaAt(const stage::Rect& rect) const
{
    const wxRect wanted(rect.x, rect.y, std::max(rect.width, 1), std::max(rect.height, 1));
    int found = wxDisplay::GetFromPoint(wxPoint(wanted.x + wanted.width / 2, wanted.y + wanted.height / 2));
    for (unsigned i = 0; found == wxNOT_FOUND && i < wxDisplay::GetCount(); ++i) {
        if (wxDisplay(i).GetGeometry().Intersects(wanted))
            found = static_cast<int>(i);
    }
    if (found == wxNOT_FOUND)
        return std::nullopt;
    const wxRect area = wxDisplay(static_cast<unsigned>(found)).GetClientArea();
    return stage::Rect{area.x, area.y, area.width, area.height};
}

double DesktopStageView::PixelScale() const { return std::max(1.0, FontScale()); }

int DesktopStageView::PictureDetail() const { return DotsToAPixel(); }

void DesktopStageView::OnTimer()
{
    if (ticker_ == nullptr)
        return;
    timer_.StartOnce(kMeanwhileMs);
    ticker_->Tick();
    Wake();
}

wxDC& DesktopStageView::Measuring(const stage::FontSpec& font) const
{
    if (!measuring_.GetFont().IsOk() || measuringFont_ != font) {
        measuring_.SetFont(FontOf(font));
        measuringFont_ = font;
    }
    return measuring_;
}

std::unique_ptr<stage::StageView> MakeStageView(ViewOptions options)
{
    return std::make_unique<DesktopStageView>(std::move(options));
}

} // namespace voxtrel::agent::view
