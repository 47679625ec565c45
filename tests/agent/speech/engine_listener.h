#pragma once

#include "agent/speech/speech_engine.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace voxtrel::agent::speech {

// A condition with a limit: wakes up with the engine and now and then.
class Bell {
public:
    std::function<void()> Ringer()
    {
        return [this] {
            ++rung_;
            changed_.notify_all();
        };
    }

    template <typename Condition>
    bool WaitFor(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(20))
    {
        std::unique_lock lock(mutex_);
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            changed_.wait_for(lock, std::chrono::milliseconds(2));
        }
        return true;
    }

    int Rung() const { return rung_; }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::atomic<int> rung_ = 0;
};

// All but the mouths, in a short form.
inline std::wstring ToldBy(const std::vector<SpeechEvent>& events)
{
    using Kind = SpeechEvent::Kind;
    std::wstring told;
    for (const SpeechEvent& event : events) {
        switch (event.kind) {
        case Kind::BalloonWord:
            told += event.text + L" ";
            break;
        case Kind::LineBreak:
            told += L"/ ";
            break;
        case Kind::Bookmark:
            told += L"#" + std::to_wstring(event.number) + L" ";
            break;
        case Kind::End:
            told += L".";
            break;
        case Kind::Mouth:
            break;
        }
    }
    return told;
}

} // namespace voxtrel::agent::speech
