#pragma once

#include "agent/acs/reader.h"
#include "agent/control.h"
#include "agent/speech/speech_engine.h"
#include "agent/stage/event_queue.h"
#include "agent/stage/random.h"
#include "agent/stage/stage_character.h"
#include "agent/stage/stage_view.h"
#include "agent/stage/trace.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::stage {

// What a control is made of.
struct ControlParts {
    std::unique_ptr<speech::SpeechEngine> engine;
    std::unique_ptr<StageView> view;
    std::function<acs::ReadOutcome(std::wstring_view path)> loadCharacter;
    std::function<std::wstring(std::wstring_view markup, std::size_t maxLength)> balloonText;
    Random random;
    Trace trace; // must not call the control
};

// The character server inside the program. The view's timer drives it.
class EmbeddedControl : public Control, private Ticker {
public:
    explicit EmbeddedControl(ControlParts parts);
    ~EmbeddedControl() override;

    Result Load(std::wstring_view id, std::wstring_view path) override;
    Result Unload(std::wstring_view id) override;
    Character* Find(std::wstring_view id) override;
    void SetEvents(ControlEvents* events) override { client_ = events; }

private:
    void Tick() override;
    Time NextTick() const override;

    ControlParts parts_;
    EventQueue events_;
    StageContext stage_;
    ControlEvents* client_ = nullptr;
    std::vector<std::unique_ptr<StageCharacter>> characters_;
    // Where the character stood that was unloaded last: the next one begins there.
    long lastTop_ = 0;
    long lastLeft_ = 0;
};

struct StageOptions {
    Trace trace;
    std::uint32_t seed = 0; // of what the character does by chance; 0 for another one each time
};

// The control with everything behind it: files are read by agent/acs, markup by agent/speech.
std::unique_ptr<Control> MakeEmbeddedControl(std::unique_ptr<speech::SpeechEngine> engine,
                                             std::unique_ptr<StageView> view, const StageOptions& options);

} // namespace voxtrel::agent::stage
