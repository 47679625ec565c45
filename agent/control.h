#pragma once

#include "agent/result.h"

#include <cstdint>
#include <string>
#include <string_view>

// The character server as its clients see it: a control holds loaded characters, a character takes requests
// and has a balloon, and what happens is told through ControlEvents. Everything here is called, and every event
// is delivered, on the user-interface thread; events never arrive from inside a call.
namespace voxtrel::agent {

// Bits of Balloon::Style. The upper half holds characters per line (bits 16..23) and lines (bits 24..31).
namespace balloon_style {
inline constexpr std::uint32_t kOn = 1;
inline constexpr std::uint32_t kSizeToText = 2;
inline constexpr std::uint32_t kAutoHide = 4;
inline constexpr std::uint32_t kAutoPace = 8;
} // namespace balloon_style

class Balloon {
public:
    virtual ~Balloon() = default;

    virtual std::wstring FontName() const = 0;
    virtual Result SetFontName(std::wstring_view name) = 0;

    // In points, 1..2160.
    virtual long FontSize() const = 0;
    virtual Result SetFontSize(long points) = 0;

    virtual std::uint32_t Style() const = 0;
    virtual Result SetStyle(std::uint32_t style) = 0;
};

class Character {
public:
    virtual ~Character() = default;

    // Queued requests; they return at once.
    virtual Result Show() = 0;
    virtual Result Hide() = 0;
    virtual Result Play(std::wstring_view animation) = 0;
    // Takes the markup by value so that a caller who is done with a long text can move it in.
    virtual Result Speak(std::wstring markup) = 0;

    // Empties the queue and silences within 50 ms; no bookmark of what was stopped arrives afterwards.
    virtual Result StopAll() = 0;

    // Of the frame; any value is allowed, also outside the screen. Immediate, not queued. The place is in screen
    // pixels, the size in those of a screen of 96 dots an inch.
    virtual long Top() const = 0;
    virtual long Left() const = 0;
    virtual long Height() const = 0;
    virtual long Width() const = 0;
    virtual Result SetTop(long pixels) = 0;
    virtual Result SetLeft(long pixels) = 0;
    virtual Result SetHeight(long pixels) = 0;
    virtual Result SetWidth(long pixels) = 0;

    // The size on this screen, in its pixels.
    virtual long ShownHeight() const { return Height(); }
    virtual long ShownWidth() const { return Width(); }

    // The engine mode identifier in braces; compared without regard to case. An identifier that this machine
    // does not have fails with VoiceNotAvailable and leaves the voice that was in use.
    virtual std::wstring TTSModeID() const = 0;
    virtual Result SetTTSModeID(std::wstring_view id) = 0;

    virtual bool SoundEffectsOn() const = 0;
    virtual Result SetSoundEffectsOn(bool on) = 0;

    virtual bool Visible() const = 0;
    virtual Balloon& GetBalloon() = 0;
};

// A mouse event on the character, in the control's own numbers.
struct PointerEvent {
    std::wstring characterId;
    int button = 0; // 1 left, 2 right, 4 middle
    int shift = 0;  // 1 shift, 2 ctrl, 4 alt, added up
    long x = 0;     // screen pixels
    long y = 0;
};

class ControlEvents {
public:
    virtual ~ControlEvents() = default;

    virtual void Bookmark(std::int32_t number) { (void)number; }
    virtual void Click(const PointerEvent& event) { (void)event; }
    virtual void DblClick(const PointerEvent& event) { (void)event; }
    virtual void DragStart(const PointerEvent& event) { (void)event; }
    virtual void DragComplete(const PointerEvent& event) { (void)event; }
    virtual void RequestStart(std::wstring_view request) { (void)request; }
    virtual void RequestComplete(std::wstring_view request, const Result& result)
    {
        (void)request;
        (void)result;
    }
    virtual void BalloonShow() {}
    virtual void BalloonHide() {}
    virtual void IdleStart() {}
    virtual void IdleComplete() {}
};

class Control {
public:
    virtual ~Control() = default;

    // Loads the character file at path under the client's own name id, without showing it. It stands where the
    // character stood that was unloaded last. Identifiers are compared without regard to case. Fails with CharacterAlreadyLoaded, FileNotFound, NotACharacterFile, ...
    virtual Result Load(std::wstring_view id, std::wstring_view path) = 0;

    // Stops and hides at once, without a hiding animation, and frees the character.
    virtual Result Unload(std::wstring_view id) = 0;

    // The loaded character, or null. Valid until Unload.
    virtual Character* Find(std::wstring_view id) = 0;

    // Who is told what happens; null for nobody. Not owned.
    virtual void SetEvents(ControlEvents* events) = 0;
};

} // namespace voxtrel::agent
