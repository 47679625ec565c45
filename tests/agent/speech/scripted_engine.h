#pragma once

#include "agent/speech/voice_engine.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace voxtrel::agent::speech {

inline constexpr std::uint32_t kScriptedCode = 0x5C419ED0;

// What an engine of these tests does and has been asked. Each word is a tone of the same length.
struct Script {
    int sampleRate = 22050;
    int msPerWord = 200;
    // The words that are reported when this word begins.
    std::function<std::vector<std::size_t>(std::size_t word)> reports = [](std::size_t word) {
        return std::vector<std::size_t>{word};
    };
    std::optional<std::size_t> failsIn; // half of the word is heard
    std::optional<std::size_t> hangsIn; // likewise; until Release
    std::vector<std::wstring> keys = {L"tone"};

    std::vector<std::wstring> Said()
    {
        const std::lock_guard lock(mutex);
        return said;
    }
    void Release()
    {
        const std::lock_guard lock(mutex);
        released = true;
        changed.notify_all();
    }

    std::atomic<int> listed = 0, made = 0;
    std::atomic<int> hanging = 0;
    std::mutex mutex;
    std::condition_variable changed;
    bool released = false;
    std::vector<std::wstring> said;
};

VoiceFamily ScriptedFamily(const std::shared_ptr<Script>& script);

inline std::wstring ScriptedVoice() { return VoiceModeId(kScriptedCode, L"tone"); }

} // namespace voxtrel::agent::speech
