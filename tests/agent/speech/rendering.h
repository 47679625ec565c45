#pragma once

#include "agent/speech/utterance_renderer.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

namespace voxtrel::agent::speech {

// An utterance as it was made.
struct Rendering : UtteranceSink {
    bool Samples(std::span<const std::int16_t> more) override
    {
        samples.insert(samples.end(), more.begin(), more.end());
        return samples.size() < enough;
    }
    void Event(std::int64_t sample, SpeechEvent event) override
    {
        // Given in order and before its samples.
        EXPECT_GE(sample, times.empty() ? 0 : times.back());
        EXPECT_GE(sample, std::ssize(samples));
        times.push_back(sample);
        events.push_back(std::move(event));
    }

    std::vector<std::int64_t> TimesOf(SpeechEvent::Kind kind) const
    {
        std::vector<std::int64_t> found;
        for (std::size_t i = 0; i < events.size(); ++i) {
            if (events[i].kind == kind)
                found.push_back(times[i]);
        }
        return found;
    }

    std::vector<std::int16_t> samples;
    std::vector<std::int64_t> times;
    std::vector<SpeechEvent> events;
    std::size_t enough = SIZE_MAX;
};

} // namespace voxtrel::agent::speech
