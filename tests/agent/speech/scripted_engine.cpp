#include "scripted_engine.h"

#include <cmath>
#include <numbers>

namespace voxtrel::agent::speech {

namespace {

constexpr double kToneHz = 1000;
constexpr double kLoud = 8000;

class ScriptedEngine : public VoiceEngine {
public:
    explicit ScriptedEngine(std::shared_ptr<Script> script) : script_(std::move(script)) {}

    bool Speak(const SystemVoice&, const Phrase& phrase, EngineSink& sink) override
    {
        {
            const std::lock_guard lock(script_->mutex);
            script_->said.push_back(PhraseText(phrase));
        }
        made_ = 0;
        if (!sink.Begin(script_->sampleRate))
            return true;
        for (std::size_t word = 0; word < phrase.words.size(); ++word) {
            const int ms = script_->msPerWord;
            const bool breaks = script_->failsIn == word || script_->hangsIn == word;
            for (const std::size_t reported : script_->reports(word)) {
                if (!sink.Word(made_, reported))
                    return true;
            }
            if (!sink.Samples(Tone(breaks ? ms / 2 : ms)))
                return true;
            if (script_->failsIn == word)
                return false;
            if (script_->hangsIn == word)
                Hang();
        }
        return true;
    }

private:
    std::vector<std::int16_t> Tone(int ms)
    {
        std::vector<std::int16_t> tone(static_cast<std::size_t>(script_->sampleRate) *
                                       static_cast<std::size_t>(ms) / 1000);
        for (std::int16_t& sample : tone) {
            const double seconds = static_cast<double>(made_++) / script_->sampleRate;
            sample = static_cast<std::int16_t>(kLoud * std::sin(2 * std::numbers::pi * kToneHz * seconds));
        }
        return tone;
    }

    void Hang()
    {
        ++script_->hanging;
        {
            std::unique_lock lock(script_->mutex);
            script_->changed.wait(lock, [this] { return script_->released; });
        }
        --script_->hanging;
    }

    std::shared_ptr<Script> script_;
    std::int64_t made_ = 0;
};

} // namespace

VoiceFamily ScriptedFamily(const std::shared_ptr<Script>& script)
{
    return {.code = kScriptedCode,
            .name = L"Scripted",
            .list =
                [script] {
                    ++script->listed;
                    std::vector<SystemVoice> voices;
                    for (const std::wstring& key : script->keys) {
                        voices.push_back({.modeId = VoiceModeId(kScriptedCode, key),
                                          .displayName = key + L", Scripted",
                                          .engine = L"Scripted",
                                          .language = L"de",
                                          .key = key});
                    }
                    return voices;
                },
            .makeEngine =
                [script] {
                    ++script->made;
                    return std::make_unique<ScriptedEngine>(script);
                }};
}

} // namespace voxtrel::agent::speech
