#pragma once

#include "agent/speech/prosody.h"
#include "agent/speech/tag_parser.h"
#include "agent/speech/text_normalizer.h"
#include "agent/speech/voices.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::speech {

// Something to report just before a token of its clause sounds.
struct Cue {
    enum class Kind { Mark, BalloonWord, LineBreak };
    Kind kind = Kind::Mark;
    std::size_t token = 0; // its index; the number of tokens: after the last
    std::int32_t number = 0;
    std::wstring text = {};

    friend bool operator==(const Cue&, const Cue&) = default;
};

// From how many tokens on a clause is cut: at a comma, before a conjunction, anywhere.
struct CutLimits {
    std::size_t comma, conjunction, anywhere;
};

// What is synthesized in one go. A clause may have no tokens: then its cues are due where the sound has
// arrived.
struct Clause {
    Prosody prosody;
    std::vector<SpokenToken> tokens;
    std::vector<Cue> cues;
    Break before = Break::None; // what stands between the token before and the first one
    int pauseMs = 0;            // silence asked for after the tokens; no natural pause is added to it
    bool last = false;          // nothing follows

    friend bool operator==(const Clause&, const Clause&) = default;
};

// Reads markup and hands it out in clauses: ends of sentences, commas in long ones, tags that change the
// voice, and a limit for those who never use a comma. The first clauses are short, so that the voice begins
// at once. No word is lost or said twice, whatever the markup.
class ClauseCutter {
public:
    // Bookmarks of repeated speech are not reported again.
    enum class Bookmarks { Report, Skip };

    // What the tokens are: words for the built-in voices, cut where English speakers pause; or UTF-8 as it is
    // written, for engines that know their languages themselves.
    enum class Wording { English, AsWritten };

    // markup must outlive the cutter.
    explicit ClauseCutter(std::wstring_view markup, Bookmarks bookmarks = Bookmarks::Report,
                          Wording wording = Wording::English)
        : parser_(markup), bookmarks_(bookmarks), wording_(wording)
    {
    }

    // The next clause. After the last one, empty clauses with last set.
    Clause Next();

    // Clauses that were taken and are to come again, before all others.
    void PutBack(std::deque<Clause> clauses);

    // How far the markup has been read, in characters.
    std::size_t Position() const { return parser_.Position(); }

private:
    enum class TrailingCues { Keep, MoveOn };

    void Take(const MarkupToken& token);
    void TakeText(std::wstring_view text);
    void TakeCharacter(std::wstring_view character, char32_t c);
    void TakeSpace(char32_t c);
    void TakeMark(std::int32_t number);
    void TakePause(int ms);
    void ChangeProsody(const Prosody& prosody);
    void BeginMap(const MarkupToken& token);
    void EndMap(const MarkupToken& token);

    void EndRun();
    void AddTokens(NormalizedRun run);
    void Punctuate(Break ending);
    void Finish(TrailingCues cues);
    const CutLimits& Limits() const;

    void AddCue(Cue cue);
    void ShowMapped(std::wstring_view balloon);
    void ShowCharacter(std::wstring_view character);
    void ShowSpace(char32_t c);

    TagParser parser_;
    Bookmarks bookmarks_;
    Wording wording_;
    Prosody prosody_;
    Clause clause_;               // being filled
    std::deque<Clause> finished_; // to be handed out
    std::size_t clausesMade_ = 0; // with tokens

    std::wstring run_;                // the characters of the word being read
    std::vector<std::int32_t> inRun_; // marks met inside of it, due after it
    bool emphasis_ = false;           // of the next word
    bool seam_ = false;               // a Map began or ended since the last character
    Break before_ = Break::None;      // since the last token
    bool paused_ = false;             // by a tag, since the last token
    int lineBreaks_ = 0;              // since the last character that is no white space
    char32_t lastSpace_ = 0;

    bool inMap_ = false;
    bool mapShown_ = false;        // the balloon part has been dealt with
    std::wstring_view mapBalloon_; // meant to be shown with the first sound of the Map

    bool balloonOpen_ = false; // the last balloon word may still grow
    char32_t lastShownSpace_ = 0;
};

// The wording that the synthesizer of this voice takes.
ClauseCutter::Wording WordingFor(const Voice& voice);

} // namespace voxtrel::agent::speech
