#pragma once

#include "agent/acs/character_file.h"
#include "agent/stage/geometry.h"
#include "agent/stage/picture.h"
#include "agent/stage/time.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the stage needs of a desktop: windows for characters and balloons, the measures of text and monitors,
// and somebody who wakes it. All of it lives on the user-interface thread.
namespace voxtrel::agent::stage {

struct FontSpec {
    std::wstring name;
    int points = 10;
    bool bold = false;
    bool italic = false;
    friend bool operator==(const FontSpec&, const FontSpec&) = default;
};

class TextMeasure {
public:
    virtual ~TextMeasure() = default;

    // Pixels.
    virtual int Width(const FontSpec& font, std::wstring_view text) const = 0;
    virtual int LineHeight(const FontSpec& font) const = 0;
};

struct BalloonColors {
    acs::Color text;
    acs::Color background;
    acs::Color border;
    friend bool operator==(const BalloonColors&, const BalloonColors&) = default;
};

enum class Edge { Top, Bottom, Left, Right };

// A balloon as it is to be painted. Offsets are from the body's top-left corner, screen pixels.
struct BalloonPicture {
    Rect body;           // on the screen, without the wedge
    Edge wedgeEdge{};    // the edge of the body that the wedge stands on
    int wedgeCenter = 0; // along that edge
    int wedgeWidth = 0;  // at the body
    int wedgeLength = 0; // from the body to the tip
    int cornerRadius = 0;
    Point text; // of the first line
    int lineHeight = 0;
    std::vector<std::wstring> lines;
    FontSpec font;
    BalloonColors colors;
    friend bool operator==(const BalloonPicture&, const BalloonPicture&) = default;
};

// What the user's pointer does to a character or its balloon. Positions are on the screen; button and shift
// are in the numbers of agent::PointerEvent.
class PointerInput {
public:
    virtual ~PointerInput() = default;

    virtual void Press(int button, int shift, Point at) = 0;
    virtual void Move(Point at) = 0;
    virtual void Release(int button, int shift, Point at) = 0;
    // In place of the second Press; the Release follows.
    virtual void DoublePress(int button, int shift, Point at) = 0;
    // The pointer was taken away in the middle of a press.
    virtual void PressLost() = 0;
    virtual void BalloonPress() = 0;
};

// The two windows of one character. Both are hidden at first.
class CharacterView {
public:
    virtual ~CharacterView() = default;

    // Shows the character's window at this place with this picture, which may have more pixels than the place; the
    // view keeps it.
    virtual void ShowFrame(std::shared_ptr<const Picture> picture, const Rect& place) = 0;
    virtual void MoveFrame(Point topLeft) = 0;
    virtual void HideFrame() = 0;

    virtual void ShowBalloon(const BalloonPicture& balloon) = 0;
    virtual void HideBalloon() = 0;
};

// Asked by the view's timer.
class Ticker {
public:
    virtual ~Ticker() = default;

    // Does what is due and delivers events.
    virtual void Tick() = 0;

    // When Tick is wanted next; kNever while nothing moves.
    virtual Time NextTick() const = 0;
};

class StageView : public TextMeasure {
public:
    virtual Time Now() const = 0;

    // From now on calls Tick when NextTick says so; null to stop. The ticker is not owned.
    virtual void Drive(Ticker* ticker) = 0;

    // NextTick has become earlier.
    virtual void Wake() = 0;

    // name is the character's own, for assistive programs. The input outlives the view that is made.
    virtual std::unique_ptr<CharacterView> MakeCharacterView(std::wstring_view name, PointerInput& input) = 0;

    // The part of a monitor that windows may cover: of the monitor that shows the middle of the rectangle, or
    // else any part of it. Nothing when no monitor shows it.
    virtual std::optional<Rect> WorkAreaAt(const Rect& rect) const = 0;

    // Pixels for what measures one pixel at 96 dots an inch.
    virtual double PixelScale() const = 0;

    // Pixels of a picture to one pixel of the places given here, in each direction: more than one on a desktop that
    // draws everything larger by itself.
    virtual int PictureDetail() const { return 1; }
};

} // namespace voxtrel::agent::stage
