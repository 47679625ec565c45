#pragma once

#include "agent/speech/clause_cutter.h"
#include "agent/speech/speech_engine.h"
#include "agent/speech/synthesizer.h"

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <span>
#include <string_view>
#include <vector>

namespace voxtrel::agent::speech {

// Takes an utterance as it is made: its samples, and its events in order, each before the sample it belongs
// to.
class UtteranceSink {
public:
    virtual ~UtteranceSink() = default;

    // False stops the rendering.
    virtual bool Samples(std::span<const std::int16_t> samples) = 0;

    // Whether the utterance is still wanted.
    virtual bool Wanted() const { return true; }

    // sample counts from the beginning of the utterance and never decreases from event to event.
    virtual void Event(std::int64_t sample, SpeechEvent event) = 0;
};

// Makes the sound and the events of one utterance, clause by clause.
class UtteranceRenderer : private SpeechSink {
public:
    // All arguments must outlive the renderer.
    UtteranceRenderer(std::wstring_view markup, const Voice& voice, Synthesizer& synthesizer,
                      UtteranceSink& sink,
                      ClauseCutter::Bookmarks bookmarks = ClauseCutter::Bookmarks::Report);

    // Goes on with an utterance of which some clauses have been taken.
    UtteranceRenderer(ClauseCutter clauses, const Voice& voice, Synthesizer& synthesizer,
                      UtteranceSink& sink);

    // Renders the next clause. False when the utterance is over, its End event given, or the sink has stopped
    // it.
    bool RenderClause();

    // How far the markup has been read, in characters.
    std::size_t Position() const { return cutter_.Position(); }

private:
    struct TimedEvent {
        std::int64_t sample = 0;
        SpeechEvent event;
    };

    bool Timing(const SpeechTiming& timing) override;
    bool Samples(std::span<const std::int16_t> samples) override;
    bool Wanted() const override { return !stopped_ && sink_.Wanted(); }

    bool Audible(std::int16_t sample) const { return std::abs(int{sample}) >= audible_; }
    void FindOnset();
    void PlanEvents();
    void PlanMouths();
    void Hold(std::span<const std::int16_t> samples);
    std::size_t UntilLast(int amplitude) const;
    void CloseMouthAtFade();
    void Release(std::size_t count);
    void ReleaseEvents(std::int64_t before);
    void EndSound();
    void AddSilence(std::int64_t samples);
    void Amplify(std::span<std::int16_t> samples, std::int64_t first);
    void Give(const Cue& cue);
    void GiveMouth(acs::Mouth mouth);

    ClauseCutter cutter_;
    const Voice& voice_;
    Synthesizer& synthesizer_;
    UtteranceSink& sink_;
    int audible_; // the least amplitude of speech

    Clause clause_;
    std::int64_t made_ = 0; // samples given to the sink
    bool spoken_ = false;   // a clause with sound came before
    bool paused_ = true;    // a silence that is to be exact came just before
    bool stopped_ = false;
    acs::Mouth mouth_ = acs::Mouth::Closed;
    std::int64_t mouthSince_;

    // Of the clause in work. Positions of the synthesizer become those of the utterance by adding offset_.
    SpeechTiming timing_;
    bool timed_ = false;
    bool begun_ = false; // the leading silence is over
    std::int64_t offset_ = 0;
    std::vector<std::int16_t> held_; // not yet given: leading samples, or what may be the voice dying away
    int loudest_ = 0;                // amplitude so far
    std::vector<std::int16_t> ready_;
    std::deque<TimedEvent> events_;
    double gain_ = 1;
};

} // namespace voxtrel::agent::speech
