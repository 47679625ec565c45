#include "agent/speech/played_utterance.h"

#include "agent/speech/engine_synthesizer.h"

#include <algorithm>
#include <utility>

namespace voxtrel::agent::speech {

namespace {

using namespace std::chrono_literals;
using Kind = SpeechEvent::Kind;

constexpr auto kTick = 15ms;
constexpr std::size_t kAhead = 2;        // the sentence being heard and the next
constexpr auto kMarksComeWithin = 400ms; // after the beginning, from an engine that tells of words at all
constexpr auto kBeginsWithin = 10s;      // another program may have something to say first
constexpr auto kGoesOnWithin = 4s;       // with the next phrase
constexpr auto kPatience = 2s;           // beyond three times of what it should take
constexpr auto kMouthHold = 50ms;

std::size_t Letters(const Phrase& phrase, std::size_t words)
{
    std::size_t letters = 0;
    for (std::size_t i = 0; i < words; ++i)
        letters += SpokenLength(phrase.words[i].text);
    return letters;
}

} // namespace

PlayedUtterance::PlayedUtterance(ClauseCutter clauses, const Voice& voice, VoicePlayer& player,
                                 PlayedSink& sink)
    : cutter_(std::move(clauses)), voice_(voice), player_(player), sink_(sink), lastSign_(Clock::now())
{
}

PlayedUtterance::Outcome PlayedUtterance::Run()
{
    while (sink_.Wanted()) {
        Refill();
        if (items_.empty()) {
            sink_.Event({.kind = Kind::End});
            return Outcome::Complete;
        }
        if (items_.front().phrase.words.empty()) {
            FinishFront();
            continue;
        }
        if (!QueueDue() || !Take(player_.Wait(kTick)) || Overdue()) {
            player_.Cancel();
            return Outcome::Broken;
        }
        if (!items_.empty() && items_.front().begun) {
            Guess(items_.front());
            MoveMouth(items_.front());
        }
    }
    player_.Cancel();
    return Outcome::Stopped;
}

void PlayedUtterance::Refill()
{
    while (!allRead_ && items_.size() < kAhead) {
        Item item{.clause = cutter_.Next()};
        allRead_ = item.clause.last;
        item.phrase = MakePhrase(item.clause.tokens, item.clause.prosody);
        item.number = ++lastNumber_;
        items_.push_back(std::move(item));
    }
}

// Hands the first phrase to the engine, and those that follow it without a pause.
bool PlayedUtterance::QueueDue()
{
    for (Item& item : items_) {
        if (item.phrase.words.empty())
            break;
        if (!item.queued) {
            if (&item == &items_.front())
                lastSign_ = Clock::now();
            item.queued = true;
            if (!player_.Queue(item.number, *voice_.system, item.phrase))
                return false;
        }
        if (item.clause.pauseMs > 0)
            break;
    }
    return true;
}

// False when the engine is gone.
bool PlayedUtterance::Take(const PlayerEvent& event)
{
    if (event.kind == PlayerEvent::Kind::Failed)
        return false;
    if (event.kind == PlayerEvent::Kind::Nothing)
        return true;
    lastSign_ = Clock::now();
    const auto known = std::find_if(items_.begin(), items_.end(), [&event](const Item& item) {
        return item.number == event.phrase && item.queued;
    });
    if (known == items_.end())
        return true;
    while (items_.front().number != event.phrase) // its end got lost
        FinishFront();
    Item& item = items_.front();
    BeginItem(item);
    if (event.kind == PlayerEvent::Kind::Word) {
        item.marked = true;
        ReachWord(item, event.word);
    } else if (event.kind == PlayerEvent::Kind::End) {
        const auto took = std::chrono::duration<double, std::milli>(lastSign_ - item.begunAt).count();
        const std::size_t letters = Letters(item.phrase, item.phrase.words.size());
        const double measured =
            took * item.clause.prosody.SpeedFactor() / static_cast<double>(std::max<std::size_t>(letters, 1));
        msPerLetter_ = std::clamp((msPerLetter_ + measured) / 2, 20.0, 200.0);
        FinishFront();
    }
    return true;
}

void PlayedUtterance::BeginItem(Item& item)
{
    if (item.begun)
        return;
    item.begun = true;
    item.begunAt = Clock::now();
    ReachWord(item, 0);
}

void PlayedUtterance::ReachWord(Item& item, std::size_t word)
{
    if (word >= item.phrase.words.size() || (word < item.reached))
        return;
    GiveCues(item, word);
    item.reached = word + 1;
    item.wordAt = Clock::now();
    const auto ms = TimeOf(item, word + 1) - TimeOf(item, word);
    mouths_ = MouthsOfWord(item.phrase.words[word].text, 0, ms.count());
    nextMouth_ = 0;
}

void PlayedUtterance::Guess(Item& item)
{
    const auto since = Clock::now() - item.begunAt;
    if (item.marked || since < kMarksComeWithin)
        return;
    while (item.reached < item.phrase.words.size() && since >= TimeOf(item, item.reached))
        ReachWord(item, item.reached);
}

// How long so many words of the phrase take, as far as one can tell.
std::chrono::milliseconds PlayedUtterance::TimeOf(const Item& item, std::size_t words) const
{
    const double ms =
        static_cast<double>(Letters(item.phrase, words)) * msPerLetter_ / item.clause.prosody.SpeedFactor();
    return std::chrono::milliseconds(static_cast<std::int64_t>(ms));
}

void PlayedUtterance::MoveMouth(const Item& item)
{
    const auto now = Clock::now();
    const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(now - item.wordAt).count();
    if (now < mouthAt_ + kMouthHold)
        return;
    acs::Mouth due = mouth_;
    for (; nextMouth_ < mouths_.size() && mouths_[nextMouth_].start <= since; ++nextMouth_)
        due = mouths_[nextMouth_].mouth;
    GiveMouth(due);
}

void PlayedUtterance::GiveMouth(acs::Mouth mouth)
{
    if (mouth == mouth_)
        return;
    mouth_ = mouth;
    mouthAt_ = Clock::now();
    sink_.Event({.kind = Kind::Mouth, .mouth = mouth});
}

void PlayedUtterance::FinishFront()
{
    Item& item = items_.front();
    GiveCues(item, item.clause.tokens.size());
    GiveMouth(acs::Mouth::Closed);
    mouths_.clear();
    const int pause = item.clause.pauseMs;
    items_.pop_front();
    Rest(pause);
}

void PlayedUtterance::GiveCues(Item& item, std::size_t upToToken)
{
    std::vector<Cue>& cues = item.clause.cues;
    for (; item.cuesGiven < cues.size() && cues[item.cuesGiven].token <= upToToken; ++item.cuesGiven) {
        Cue& cue = cues[item.cuesGiven];
        switch (cue.kind) {
        case Cue::Kind::Mark:
            sink_.Event({.kind = Kind::Bookmark, .number = cue.number});
            break;
        case Cue::Kind::BalloonWord:
            sink_.Event({.kind = Kind::BalloonWord, .text = cue.text});
            break;
        case Cue::Kind::LineBreak:
            sink_.Event({.kind = Kind::LineBreak});
            break;
        }
    }
}

// Whether the engine has not said anything for longer than the phrase can take.
bool PlayedUtterance::Overdue() const
{
    if (items_.empty() || !items_.front().queued)
        return false;
    const Item& item = items_.front();
    if (!item.begun)
        return Clock::now() > lastSign_ + (item.number == 1 ? kBeginsWithin : kGoesOnWithin);
    const std::size_t from = item.marked ? item.reached - 1 : 0;
    const std::size_t to = item.marked ? item.reached : item.phrase.words.size();
    return Clock::now() > lastSign_ + kPatience + 3 * (TimeOf(item, to) - TimeOf(item, from));
}

void PlayedUtterance::Rest(int ms)
{
    const auto until = Clock::now() + std::chrono::milliseconds(ms);
    while (Clock::now() < until && sink_.Wanted()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
        player_.Wait(std::min<std::chrono::milliseconds>(kTick, left));
    }
    lastSign_ = Clock::now();
}

ClauseCutter PlayedUtterance::TakeRest()
{
    std::deque<Clause> rest;
    for (Item& item : items_) {
        Clause& clause = item.clause;
        const std::size_t said = item.reached > 0 ? item.reached - 1 : 0;
        clause.tokens.erase(clause.tokens.begin(), clause.tokens.begin() + static_cast<std::ptrdiff_t>(said));
        clause.cues.erase(clause.cues.begin(),
                          clause.cues.begin() + static_cast<std::ptrdiff_t>(item.cuesGiven));
        for (Cue& cue : clause.cues)
            cue.token -= said;
        rest.push_back(std::move(clause));
    }
    items_.clear();
    cutter_.PutBack(std::move(rest));
    return std::move(cutter_);
}

} // namespace voxtrel::agent::speech
