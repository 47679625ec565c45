#pragma once

#include "agent/acs/character_file.h"
#include "agent/result.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::speech {

// Something that happens at a moment of the sound now being heard.
struct SpeechEvent {
    enum class Kind {
        BalloonWord, // the voice begins the next word that the balloon shows: text, as written, no blanks
                     // around it
        LineBreak,   // a line break of the text was passed: the balloon starts a new line
        Bookmark,    // number
        Mouth,       // mouth
        End,         // the utterance is over; the last event of every utterance that is not stopped
    };
    Kind kind = Kind::End;
    std::wstring text = {};
    std::int32_t number = 0;
    acs::Mouth mouth = acs::Mouth::Closed;
};

// Plays short sounds beside the voice, on the same device. Used from the user-interface thread only.
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;

    // Begins to play a whole RIFF WAVE file; sounds that are still playing go on. Returns how long it lasts,
    // zero for a sound that cannot be played.
    virtual std::chrono::milliseconds StartSound(std::span<const std::uint8_t> wave) = 0;

    // Silences all sounds, not the voice.
    virtual void StopSounds() = 0;
};

// Speaks one utterance at a time. Used from the user-interface thread only; synthesis and playing go on
// beside it.
class SpeechEngine {
public:
    virtual ~SpeechEngine() = default;

    // Chooses the voice by its engine mode identifier. On failure (VoiceNotAvailable) the voice in use stays.
    virtual Result SetMode(std::wstring_view modeId) = 0;
    virtual std::wstring Mode() const = 0;

    // Begins an utterance; returns at once however long the text is. Any utterance before it is stopped.
    virtual void Start(std::wstring markup) = 0;

    // Silences at once; events of the stopped utterance are dropped. Harmless when nothing is spoken.
    virtual void Stop() = 0;

    // True from Start until the End event was taken or Stop was called.
    virtual bool Speaking() const = 0;

    // The events whose moment has been heard since the last call, in order.
    virtual std::vector<SpeechEvent> TakeDueEvents() = 0;

    // How long it is until the next event is due, as far as that is known already; less than nothing for one
    // that is late. An engine that cannot tell is asked for events at its user's own pace.
    virtual std::optional<std::chrono::nanoseconds> UntilNextEvent() const { return std::nullopt; }

    // Null for an engine that only speaks. Lives as long as the engine.
    virtual SoundPlayer* Sounds() { return nullptr; }
};

// What the balloon shows of a markup, as one text, for a balloon that shows the whole text at once or sizes
// itself to it. Stops after maxLength characters: no balloon shows a book.
std::wstring BalloonText(std::wstring_view markup, std::size_t maxLength);

} // namespace voxtrel::agent::speech
