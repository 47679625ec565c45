#include "agent/speech/clause_cutter.h"

#include "agent/speech/balloon_text.h"
#include "agent/speech/plain_text.h"
#include "agent/speech/text_characters.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace voxtrel::agent::speech {

namespace {

using Kind = MarkupToken::Kind;

// A word is cut at its first sign past the one, and anywhere at the other.
constexpr std::size_t kLongRun = 64;
constexpr std::size_t kLongestRun = 128;
constexpr std::size_t kLongestBalloonWord = 256;
constexpr std::size_t kMostCues = 256;
constexpr std::size_t kMostTokens = 64; // one run of signs can have hundreds

constexpr CutLimits kFirstClause{2, 5, 14};
constexpr CutLimits kLaterClause{8, 14, 28};
// The engines of the system know better where to breathe.
constexpr CutLimits kFirstAsWritten{3, kMostTokens, 30};
constexpr CutLimits kLaterAsWritten{16, kMostTokens, 48};

constexpr std::array<std::string_view, 14> kConjunctions = {"and",  "or",   "but",   "because", "which",
                                                            "that", "when", "while", "if",      "where",
                                                            "who",  "with", "than",  "so"};

bool IsConjunction(std::string_view word)
{
    return std::find(kConjunctions.begin(), kConjunctions.end(), word) != kConjunctions.end();
}

bool EndsInsideWord(wchar_t c)
{
    const auto last = static_cast<char32_t>(c);
    return last >= 0x80 || IsAsciiLetter(last) || IsAsciiDigit(last) || last == U'\'';
}

// Where the text without the white space around it begins and ends; all white space is at its beginning.
std::pair<std::size_t, std::size_t> Trimmed(std::wstring_view text)
{
    const auto isSpace = [](wchar_t c) { return IsWhiteSpace(static_cast<char32_t>(c)); };
    const auto begin = std::find_if_not(text.begin(), text.end(), isSpace);
    const auto end = std::find_if_not(text.rbegin(), std::make_reverse_iterator(begin), isSpace).base();
    return {begin - text.begin(), begin == text.end() ? text.size() : end - text.begin()};
}

bool IsControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

} // namespace

const CutLimits& ClauseCutter::Limits() const
{
    const bool first = clausesMade_ == 0;
    if (wording_ == Wording::AsWritten)
        return first ? kFirstAsWritten : kLaterAsWritten;
    return first ? kFirstClause : kLaterClause;
}

void ClauseCutter::PutBack(std::deque<Clause> clauses)
{
    std::move(clauses.rbegin(), clauses.rend(), std::front_inserter(finished_));
}

Clause ClauseCutter::Next()
{
    while (finished_.empty())
        Take(parser_.Next());
    Clause next = std::move(finished_.front());
    finished_.pop_front();
    return next;
}

void ClauseCutter::Take(const MarkupToken& token)
{
    Prosody prosody = prosody_;
    switch (token.kind) {
    case Kind::Text:
        return TakeText(token.text);
    case Kind::Mark:
        return TakeMark(token.number);
    case Kind::Pause:
        return TakePause(token.number);
    case Kind::Pitch:
        prosody.pitch = token.number;
        break;
    case Kind::Speed:
        prosody.speed = token.number;
        break;
    case Kind::Volume:
        prosody.volume = token.number;
        break;
    case Kind::Style:
        prosody.style = token.style;
        break;
    case Kind::Context:
        prosody.context = token.context;
        break;
    case Kind::Reset:
        prosody = Prosody();
        break;
    case Kind::Emphasis:
        EndRun();
        emphasis_ = true;
        return;
    case Kind::Repeat:
        return;
    case Kind::MapBegin:
        return BeginMap(token);
    case Kind::MapEnd:
        return EndMap(token);
    case Kind::End:
        EndRun();
        clause_.last = true;
        return Finish(TrailingCues::Keep);
    }
    ChangeProsody(prosody);
}

void ClauseCutter::TakeText(std::wstring_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint point = CodePointAt(text, i);
        const auto character = text.substr(i, point.length);
        i += point.length;
        if (IsWhiteSpace(point.value)) {
            TakeSpace(point.value);
            if (!inMap_)
                ShowSpace(point.value);
            continue;
        }
        TakeCharacter(character, point.value);
        if (!inMap_)
            ShowCharacter(character);
    }
}

void ClauseCutter::TakeCharacter(std::wstring_view character, char32_t c)
{
    if (seam_ && !run_.empty() && StandsAlone(static_cast<char32_t>(run_.back())) && StandsAlone(c))
        EndRun();
    if (run_.size() >= kLongestRun || (run_.size() >= kLongRun && !EndsInsideWord(run_.back())))
        EndRun();
    seam_ = false;
    lineBreaks_ = 0;
    lastSpace_ = 0;
    run_ += character;
    if (inMap_ && !mapShown_)
        ShowMapped(mapBalloon_);
    if (wording_ == Wording::AsWritten && EndsPhraseWithoutBlank(c))
        EndRun();
}

// A line break is a blank; an empty line ends a paragraph.
void ClauseCutter::TakeSpace(char32_t c)
{
    EndRun();
    const bool secondHalf = c == U'\n' && lastSpace_ == U'\r';
    lastSpace_ = secondHalf ? 0 : c;
    if (IsLineBreak(c) && !secondHalf && ++lineBreaks_ == 2)
        Punctuate(Break::Paragraph);
}

// A mark goes with the next word that begins after it.
void ClauseCutter::TakeMark(std::int32_t number)
{
    if (bookmarks_ == Bookmarks::Skip)
        return;
    if (!run_.empty() && EndsInsideWord(run_.back())) {
        inRun_.push_back(number);
        return;
    }
    EndRun();
    AddCue({.kind = Cue::Kind::Mark, .number = number});
}

void ClauseCutter::TakePause(int ms)
{
    EndRun();
    clause_.pauseMs = ms;
    before_ = Break::None;
    paused_ = true;
    Finish(TrailingCues::Keep);
}

void ClauseCutter::ChangeProsody(const Prosody& prosody)
{
    EndRun();
    if (prosody == prosody_)
        return;
    if (!clause_.tokens.empty())
        Finish(TrailingCues::MoveOn);
    prosody_ = prosody;
}

void ClauseCutter::BeginMap(const MarkupToken& token)
{
    inMap_ = true;
    seam_ = true;
    // Of a book inside a Map the balloon part is not known yet: it is shown at the end.
    mapShown_ = !token.balloonKnown;
    mapBalloon_ = token.text;
}

void ClauseCutter::EndMap(const MarkupToken& token)
{
    if (!mapShown_ || mapBalloon_.data() != token.text.data())
        ShowMapped(token.text);
    const std::wstring shown = MappedBalloonText(token.text);
    for (auto at = shown.begin() + static_cast<std::ptrdiff_t>(Trimmed(shown).second); at != shown.end();
         ++at) {
        EndRun();
        ShowSpace(*at);
    }
    inMap_ = false;
    seam_ = true;
}

void ClauseCutter::EndRun()
{
    if (!run_.empty()) {
        AddTokens(wording_ == Wording::English ? NormalizeRun(run_, prosody_.context) : KeepRun(run_));
        run_.clear();
    }
    for (const std::int32_t number : std::exchange(inRun_, {}))
        AddCue({.kind = Cue::Kind::Mark, .number = number});
}

void ClauseCutter::AddTokens(NormalizedRun run)
{
    if (!run.tokens.empty()) {
        const std::size_t soFar = clause_.tokens.size();
        const CutLimits& limits = Limits();
        if (soFar >= limits.anywhere ||
            (soFar >= limits.conjunction && IsConjunction(run.tokens.front().name)))
            Finish(TrailingCues::MoveOn);
        paused_ = false;
        for (SpokenToken& token : run.tokens) {
            if (clause_.tokens.size() >= kMostTokens)
                Finish(TrailingCues::MoveOn);
            if (clause_.tokens.empty()) {
                clause_.prosody = prosody_;
                clause_.before = std::exchange(before_, Break::None);
            }
            token.emphasized = emphasis_;
            clause_.tokens.push_back(std::move(token));
        }
        emphasis_ = false;
    }
    Punctuate(run.ending);
}

// After a pause that was asked for, and before the next word, punctuation adds nothing.
void ClauseCutter::Punctuate(Break ending)
{
    if (ending == Break::None || paused_)
        return;
    const std::size_t soFar = clause_.tokens.size();
    const CutLimits& limits = Limits();
    if (soFar == 0) {
        before_ = std::max(before_, ending);
        return;
    }
    char& punctuation = clause_.tokens.back().punctuation;
    if (punctuation == 0 && (wording_ == Wording::English || ending == Break::Paragraph))
        punctuation = ending == Break::Paragraph ? '.' : ',';
    if (ending == Break::Comma && soFar < limits.comma)
        return;
    before_ = ending;
    Finish(TrailingCues::MoveOn);
}

void ClauseCutter::Finish(TrailingCues cues)
{
    Clause done = std::exchange(clause_, {});
    if (cues == TrailingCues::MoveOn) {
        const auto trailing = std::find_if(done.cues.begin(), done.cues.end(), [&done](const Cue& cue) {
            return cue.token == done.tokens.size();
        });
        std::move(trailing, done.cues.end(), std::back_inserter(clause_.cues));
        done.cues.erase(trailing, done.cues.end());
        for (Cue& cue : clause_.cues)
            cue.token = 0;
    }
    balloonOpen_ = balloonOpen_ && !clause_.cues.empty();
    clausesMade_ += done.tokens.empty() ? 0 : 1;
    finished_.push_back(std::move(done));
}

void ClauseCutter::AddCue(Cue cue)
{
    if (clause_.cues.size() >= kMostCues)
        Finish(clause_.tokens.empty() ? TrailingCues::Keep : TrailingCues::MoveOn);
    cue.token = clause_.tokens.size();
    clause_.cues.push_back(std::move(cue));
}

void ClauseCutter::ShowMapped(std::wstring_view balloon)
{
    mapShown_ = true;
    const std::wstring shown = MappedBalloonText(balloon);
    const auto [begin, end] = Trimmed(shown);
    for (std::size_t i = 0; i < begin; ++i)
        ShowSpace(shown[i]);
    for (std::size_t i = begin; i < end; ++i)
        ShowCharacter({&shown[i], 1});
}

void ClauseCutter::ShowCharacter(std::wstring_view character)
{
    if (IsControl(static_cast<char32_t>(character.front())))
        return;
    lastShownSpace_ = 0;
    auto word = clause_.cues.rbegin();
    if (balloonOpen_)
        word = std::find_if(clause_.cues.rbegin(), clause_.cues.rend(),
                            [](const Cue& cue) { return cue.kind == Cue::Kind::BalloonWord; });
    if (!balloonOpen_ || word == clause_.cues.rend() || word->text.size() >= kLongestBalloonWord) {
        AddCue({.kind = Cue::Kind::BalloonWord});
        word = clause_.cues.rbegin();
        balloonOpen_ = true;
    }
    word->text += character;
}

void ClauseCutter::ShowSpace(char32_t c)
{
    balloonOpen_ = false;
    const bool secondHalf = c == U'\n' && lastShownSpace_ == U'\r';
    lastShownSpace_ = secondHalf ? 0 : c;
    if (IsLineBreak(c) && !secondHalf)
        AddCue({.kind = Cue::Kind::LineBreak});
}

ClauseCutter::Wording WordingFor(const Voice& voice)
{
    return voice.system ? ClauseCutter::Wording::AsWritten : ClauseCutter::Wording::English;
}

} // namespace voxtrel::agent::speech
