#pragma once

#include "agent/speech/speech_engine.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace voxtrel::agent {

// Goes through the words of a text, four a second, without a sound: the mouth moves and the balloon is fed.
// "/" is a line break.
class SilentSpeechEngine : public speech::SpeechEngine {
public:
    Result SetMode(std::wstring_view modeId) override
    {
        mode_ = modeId;
        return Result::Success();
    }
    std::wstring Mode() const override { return mode_; }

    void Start(std::wstring markup) override
    {
        using Kind = speech::SpeechEvent::Kind;
        constexpr std::chrono::milliseconds kSyllable{60};
        constexpr acs::Mouth kMouths[] = {acs::Mouth::Open, acs::Mouth::Narrow, acs::Mouth::Fully,
                                          acs::Mouth::Closed};
        Stop();
        Clock::time_point at = Clock::now();
        std::size_t start = 0;
        while (start < markup.size()) {
            const std::size_t end = std::min(markup.find(L' ', start), markup.size());
            const std::wstring word = markup.substr(start, end - start);
            start = end + 1;
            if (word == L"/") {
                events_.push_back({at, {Kind::LineBreak, {}, 0, {}}});
                continue;
            }
            events_.push_back({at, {Kind::BalloonWord, word, 0, {}}});
            for (const acs::Mouth mouth : kMouths) {
                events_.push_back({at, {Kind::Mouth, {}, 0, mouth}});
                at += kSyllable;
            }
        }
        events_.push_back({at, {Kind::End, {}, 0, {}}});
    }
    void Stop() override { events_.clear(); }
    bool Speaking() const override { return !events_.empty(); }
    std::vector<speech::SpeechEvent> TakeDueEvents() override
    {
        std::vector<speech::SpeechEvent> due;
        while (!events_.empty() && events_.front().first <= Clock::now()) {
            due.push_back(std::move(events_.front().second));
            events_.pop_front();
        }
        return due;
    }

private:
    using Clock = std::chrono::steady_clock;

    std::wstring mode_;
    std::deque<std::pair<Clock::time_point, speech::SpeechEvent>> events_;
};

inline std::wstring SilentBalloonText(std::wstring_view markup, std::size_t maxLength)
{
    std::wstring text(markup.substr(0, maxLength));
    std::replace(text.begin(), text.end(), L'/', L'\n');
    return text;
}

} // namespace voxtrel::agent
