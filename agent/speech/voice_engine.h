#pragma once

#include "agent/acs/character_file.h"
#include "agent/speech/prosody.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What an engine of the system has to be able to do so that its voices can be chosen. Threads, deadlines,
// resampling, timing, and the built-in voice that steps in when an engine fails are not its business: see
// EngineSynthesizer (engines that give their samples back) and PlayerEngine (engines that play by
// themselves).
namespace voxtrel::agent::speech {

// A voice that is installed on this machine.
struct SystemVoice {
    std::wstring modeId = {};      // the engine mode identifier: VoiceModeId(code of the family, key)
    std::wstring displayName = {}; // says which engine it is: "German (eSpeak NG)"
    std::wstring engine = {};      // "eSpeak NG"
    std::wstring language = {};    // a language tag such as "de" or "en-GB"; empty if the engine does not say
    bool female = false;
    std::wstring key = {}; // what the engine itself knows it by; the same at each start
};

// A word to be said, as it is written, punctuation and all; there are no blanks in it.
struct PhraseWord {
    std::wstring text;
    bool emphasized = false;
};

// What is said in one go: one sentence or a part of it.
struct Phrase {
    std::vector<PhraseWord> words; // at least one
    Prosody prosody;
};

// The words with one blank between them.
std::wstring PhraseText(const Phrase& phrase);

// Where each word begins in PhraseText, in wide characters.
std::vector<std::size_t> WordOffsets(const Phrase& phrase);

// The word that the character at offset belongs to; the last one for what lies behind the text.
std::size_t WordAtOffset(std::span<const std::size_t> offsets, std::size_t offset);

// Takes what an engine makes of a phrase, on the thread that called Speak. Samples have 16 bits and one
// channel. Positions are counted in samples of the engine's own rate from the start of the phrase; events may
// come before or after the samples they belong to. Each function returns false when nothing more is wanted.
class EngineSink {
public:
    virtual ~EngineSink() = default;

    // The rate of all samples, in hertz; comes first.
    virtual bool Begin(int sampleRate) = 0;
    virtual bool Samples(std::span<const std::int16_t> samples) = 0;

    // The word of this index begins to sound. Words that are left out are placed between their neighbours;
    // of a word that comes more than once the first counts.
    virtual bool Word(std::int64_t sample, std::size_t word) = 0;

    // The mouth from here on. Without any the mouths are made from the letters of the words.
    virtual bool Mouth(std::int64_t sample, acs::Mouth mouth) = 0;
};

// An engine that gives its samples back. It is made, used and destroyed on one and the same worker thread,
// which may be left to itself when a call does not return in time; another object is then made on another
// thread.
class VoiceEngine {
public:
    virtual ~VoiceEngine() = default;

    // Says the phrase: pitch, speed and style of the prosody applied, the volume not (the loudest the engine
    // can do without distortion; what its user has set is no concern). True when all has been said or the
    // sink has had enough; false when the engine failed: what is missing is then said by another voice.
    virtual bool Speak(const SystemVoice& voice, const Phrase& phrase, EngineSink& sink) = 0;
};

// What a player has to tell.
struct PlayerEvent {
    enum class Kind {
        Nothing, // the time was over
        Begin,   // the phrase begins to sound
        Word,    // word begins to sound
        End,     // the phrase has been said
        Failed,  // the engine is gone; comes again from then on
    };
    Kind kind = Kind::Nothing;
    std::uint32_t phrase = 0; // the number given to Queue
    std::size_t word = 0;
};

// An engine that plays what it says by itself. Used on one worker thread; no call takes longer than its limit
// or, where it has none, than a few hundred milliseconds, whatever state the engine is in.
class VoicePlayer {
public:
    virtual ~VoicePlayer() = default;

    // Says the phrase after those queued before, with its prosody, volume and all. False when the engine has
    // failed.
    virtual bool Queue(std::uint32_t number, const SystemVoice& voice, const Phrase& phrase) = 0;
    virtual PlayerEvent Wait(std::chrono::milliseconds limit) = 0;

    // Silences at once and forgets what was queued. Events of it may still come.
    virtual void Cancel() = 0;
};

// The voices of one engine. All functions are called on worker threads.
struct VoiceFamily {
    std::uint32_t code = 0; // the first eight digits of the mode identifiers of its voices
    std::wstring name;      // "eSpeak NG"

    // The voices that are installed now; may take seconds. Empty when the engine is not there.
    std::function<std::vector<SystemVoice>()> list;

    // One of the two: null when the engine cannot be used.
    std::function<std::unique_ptr<VoiceEngine>()> makeEngine = {};
    std::function<std::unique_ptr<VoicePlayer>()> makePlayer = {};

    // What its loudness is multiplied by so that it is as loud as the built-in voices.
    double gain = 1;
};

// The engine mode identifier of a voice: the same for the same family and key on every machine and at every
// start.
std::wstring VoiceModeId(std::uint32_t familyCode, std::wstring_view key);

// The family of a mode identifier; 0 for what is none.
std::uint32_t FamilyCodeOf(std::wstring_view modeId);

} // namespace voxtrel::agent::speech
