#pragma once

#include "agent/control.h"
#include "agent/speech/speech_engine.h"
#include "agent/stage/stage_view.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace voxtrel::agent::stage {

// The windows of one character as a test sees them; they outlive the character.
struct FakeWindows {
    std::wstring name;
    PointerInput* input = nullptr;
    bool alive = true;
    std::shared_ptr<const Picture> frame; // null while hidden
    Point at;
    Size size;
    int framesShown = 0;
    std::optional<BalloonPicture> balloon; // nothing while hidden
    int balloonsShown = 0;
};

// A desktop with one monitor of 1000 x 800, the lowest 40 rows of it covered. The test moves its clock.
// Letters are as wide as half the points of their font, lines as high as the points.
class FakeStageView : public StageView {
public:
    int Width(const FontSpec& font, std::wstring_view text) const override
    {
        return static_cast<int>(text.size()) * font.points / 2;
    }
    int LineHeight(const FontSpec& font) const override { return font.points; }

    Time Now() const override { return now; }
    void Drive(Ticker* driven) override
    {
        ticker = driven;
        Wake();
    }
    void Wake() override { wakeAt = ticker != nullptr ? ticker->NextTick() : kNever; }
    std::unique_ptr<CharacterView> MakeCharacterView(std::wstring_view name, PointerInput& input) override;
    std::optional<Rect> WorkAreaAt(const Rect& rect) const override
    {
        if (secondMonitor && rect.x + rect.width / 2 >= secondMonitor->x)
            return secondMonitor;
        const bool outside =
            rect.x >= monitor.width || rect.y >= monitor.height || rect.Right() <= 0 || rect.Bottom() <= 0;
        return outside ? std::nullopt : std::optional<Rect>({0, 0, monitor.width, monitor.height - 40});
    }
    double PixelScale() const override { return pixelScale; }
    int PictureDetail() const override { return pictureDetail; }

    // Ticks as the real timer would until the moment has come.
    void RunUntil(Time end)
    {
        for (int i = 0; i < 1'000'000 && wakeAt <= end; ++i) {
            now = std::max(now, wakeAt);
            ticker->Tick();
            Wake();
            ++ticks;
        }
        now = std::max(now, end);
    }
    void Run(int milliseconds) { RunUntil(now + Time{milliseconds}); }

    Time now{1'000'000};
    Size monitor{1000, 800};
    std::optional<Rect> secondMonitor; // on the right
    Ticker* ticker = nullptr;
    Time wakeAt = kNever; // what the timer is set to
    int ticks = 0;
    double pixelScale = 1;
    int pictureDetail = 1;
    std::vector<std::shared_ptr<FakeWindows>> windows; // one for each character ever loaded
};

class FakeCharacterView : public CharacterView {
public:
    explicit FakeCharacterView(std::shared_ptr<FakeWindows> windows) : windows_(std::move(windows)) {}
    ~FakeCharacterView() override
    {
        windows_->alive = false;
        windows_->frame = nullptr;
        windows_->balloon.reset();
    }
    void ShowFrame(std::shared_ptr<const Picture> picture, const Rect& place) override
    {
        windows_->frame = std::move(picture);
        windows_->at = {place.x, place.y};
        windows_->size = {place.width, place.height};
        ++windows_->framesShown;
    }
    void MoveFrame(Point topLeft) override { windows_->at = topLeft; }
    void HideFrame() override { windows_->frame = nullptr; }
    void ShowBalloon(const BalloonPicture& balloon) override
    {
        windows_->balloon = balloon;
        ++windows_->balloonsShown;
    }
    void HideBalloon() override { windows_->balloon.reset(); }

private:
    std::shared_ptr<FakeWindows> windows_;
};

inline std::unique_ptr<CharacterView> FakeStageView::MakeCharacterView(std::wstring_view name,
                                                                       PointerInput& input)
{
    windows.push_back(std::make_shared<FakeWindows>());
    windows.back()->name = name;
    windows.back()->input = &input;
    return std::make_unique<FakeCharacterView>(windows.back());
}

// Speaks one word each 100 ms of the test's clock, unless told otherwise. "#7" is a bookmark, "/" a line break, "~word" a word that
// the balloon does not show; all else is a word. The mouth is open in each word and closes at the end. A
// sound lasts as many tenths of a second as it has bytes.
class FakeSpeechEngine : public speech::SpeechEngine, public speech::SoundPlayer {
public:
    explicit FakeSpeechEngine(const FakeStageView& clock) : clock_(clock) {}

    Result SetMode(std::wstring_view modeId) override
    {
        if (modeId == L"{NONE}")
            return Result::Failure(ErrorCode::VoiceNotAvailable, L"This voice is not available.");
        mode_ = modeId;
        return Result::Success();
    }
    std::wstring Mode() const override { return mode_; }

    void Start(std::wstring markup) override
    {
        using Kind = speech::SpeechEvent::Kind;
        Stop();
        spoken.push_back(markup);
        Time at = clock_.now;
        std::size_t start = 0;
        while (start < markup.size()) {
            const std::size_t end = std::min(markup.find(L' ', start), markup.size());
            const std::wstring token = markup.substr(start, end - start);
            start = end + 1;
            if (token.empty())
                continue;
            if (token[0] == L'#') {
                events_.emplace_back(at,
                                     speech::SpeechEvent{Kind::Bookmark, {}, std::stoi(token.substr(1)), {}});
            } else if (token == L"/") {
                events_.emplace_back(at, speech::SpeechEvent{Kind::LineBreak, {}, 0, {}});
            } else {
                events_.emplace_back(at, speech::SpeechEvent{Kind::Mouth, {}, 0, acs::Mouth::Open});
                if (token[0] != L'~')
                    events_.emplace_back(at, speech::SpeechEvent{Kind::BalloonWord, token, 0, {}});
                at += wordTime;
            }
        }
        events_.emplace_back(at, speech::SpeechEvent{Kind::End, {}, 0, {}});
        speaking_ = true;
    }
    void Stop() override
    {
        if (speaking_)
            ++stopped;
        events_.clear();
        speaking_ = false;
    }
    bool Speaking() const override { return speaking_; }
    std::vector<speech::SpeechEvent> TakeDueEvents() override
    {
        std::vector<speech::SpeechEvent> due;
        while (!events_.empty() && events_.front().first <= clock_.now) {
            due.push_back(events_.front().second);
            events_.erase(events_.begin());
            if (due.back().kind == speech::SpeechEvent::Kind::End)
                speaking_ = false;
        }
        return due;
    }

    std::optional<std::chrono::nanoseconds> UntilNextEvent() const override
    {
        if (!tellsTheNextEvent || events_.empty())
            return std::nullopt;
        return events_.front().first - clock_.now;
    }

    speech::SoundPlayer* Sounds() override { return this; }
    std::chrono::milliseconds StartSound(std::span<const std::uint8_t> wave) override
    {
        soundsStarted.push_back(wave[0]);
        const Time length{100 * static_cast<int>(wave.size())};
        soundsEnd = std::max(soundsEnd, clock_.now + length);
        return length;
    }
    void StopSounds() override { soundsEnd = std::min(soundsEnd, clock_.now); }
    bool SoundsPlaying() const { return clock_.now < soundsEnd; }

    bool tellsTheNextEvent = false;
    Time wordTime{100};
    std::vector<std::wstring> spoken;
    int stopped = 0;
    std::vector<int> soundsStarted; // told by their first bytes
    Time soundsEnd{0};

private:
    const FakeStageView& clock_;
    std::wstring mode_ = L"{DEFAULT}";
    bool speaking_ = false;
    std::vector<std::pair<Time, speech::SpeechEvent>> events_;
};

// What the balloon shows of the fake engine's markup.
inline std::wstring FakeBalloonText(std::wstring_view markup, std::size_t maxLength)
{
    std::wstring text;
    std::size_t start = 0;
    while (start < markup.size() && text.size() < maxLength) {
        const std::size_t end = std::min(markup.find(L' ', start), markup.size());
        const std::wstring_view token = markup.substr(start, end - start);
        start = end + 1;
        if (token.empty() || token[0] == L'#' || token[0] == L'~')
            continue;
        if (!text.empty())
            text += L' ';
        text += token == L"/" ? L"\n" : token;
    }
    return text.substr(0, maxLength);
}

// Writes down what the control tells, one line an event.
class RecordedEvents : public ControlEvents {
public:
    void Bookmark(std::int32_t number) override { Note(L"bookmark " + std::to_wstring(number)); }
    void Click(const PointerEvent& event) override { Note(L"click", event); }
    void DblClick(const PointerEvent& event) override { Note(L"dblclick", event); }
    void DragStart(const PointerEvent& event) override { Note(L"dragstart", event); }
    void DragComplete(const PointerEvent& event) override { Note(L"dragcomplete", event); }
    void RequestStart(std::wstring_view request) override { Note(L"start " + std::wstring(request)); }
    void RequestComplete(std::wstring_view request, const Result& result) override
    {
        static const std::map<ErrorCode, std::wstring> kNames{
            {ErrorCode::None, L"done "},
            {ErrorCode::CharacterHidden, L"hidden "},
            {ErrorCode::NoSuchAnimation, L"unknown "},
            {ErrorCode::AnimationDamaged, L"damaged "},
            {ErrorCode::RequestRemoved, L"removed "},
            {ErrorCode::InterruptedByApplication, L"interrupted "},
        };
        Note(kNames.at(result.code) + std::wstring(request));
        if (!result.Ok() && result.description.empty())
            Note(L"a failure without words");
    }
    void BalloonShow() override { Note(L"balloon shown"); }
    void BalloonHide() override { Note(L"balloon hidden"); }
    void IdleStart() override { Note(L"idle"); }
    void IdleComplete() override { Note(L"idle over"); }

    // What has been told since the last call.
    std::vector<std::wstring> Take() { return std::exchange(lines, {}); }

    std::vector<std::wstring> lines;
    std::function<void(const std::wstring& line)> onEvent;

private:
    void Note(const std::wstring& line)
    {
        lines.push_back(line);
        if (onEvent)
            onEvent(line);
    }
    void Note(const std::wstring& what, const PointerEvent& event)
    {
        Note(what + L" " + event.characterId + L" " + std::to_wstring(event.button) + L" " +
             std::to_wstring(event.shift) + L" " + std::to_wstring(event.x) + L"," +
             std::to_wstring(event.y));
    }
};

} // namespace voxtrel::agent::stage
