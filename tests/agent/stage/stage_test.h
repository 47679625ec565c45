#pragma once

#include "agent/stage/embedded_control.h"
#include "tests/agent/stage/stage_fakes.h"
#include "tests/agent/stage/test_character.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace voxtrel::agent::stage {

using Lines = std::vector<std::wstring>;

// A control with the test character loaded as "genie", still hidden, at 400, 400. Chance always takes the
// lowest number.
class StageTest : public ::testing::Test {
protected:
    StageTest() { Rebuild(MakeTestCharacter()); }

    void Rebuild(acs::CharacterFile file)
    {
        control.reset();
        auto newView = std::make_unique<FakeStageView>();
        view = newView.get();
        auto newEngine = std::make_unique<FakeSpeechEngine>(*view);
        engine = newEngine.get();
        events.lines.clear();

        ControlParts parts;
        parts.engine = std::move(newEngine);
        parts.view = std::move(newView);
        parts.balloonText = FakeBalloonText;
        parts.random = [this](int bound) { return chance ? chance(bound) : 0; };
        parts.trace = [this](const TraceEvent& event) { OnTrace(event); };
        parts.loadCharacter = [file](std::wstring_view path) -> acs::ReadOutcome {
            if (path == L"missing.acs")
                return {Result::Failure(ErrorCode::FileNotFound, L"There is no such file."), {}};
            acs::ReadOutcome read{Result::Success(), file};
            if (path == L"other.acs")
                read.character.guid = "{00000000-0000-0000-0000-000000000002}";
            return read;
        };
        control = std::make_unique<EmbeddedControl>(std::move(parts));
        control->SetEvents(&events);
        ASSERT_TRUE(control->Load(L"genie", L"genie.acs").Ok());
        genie = control->Find(L"genie");
        Ignore(genie->SetLeft(400));
        Ignore(genie->SetTop(400));
    }

    // The character stands there, having just appeared; what was told of that is forgotten.
    void ShowGenie()
    {
        Ignore(genie->Show());
        view->Run(300);
        ASSERT_TRUE(genie->Visible());
        events.lines.clear();
        frames.clear();
    }

    FakeWindows& Windows() { return *view->windows.front(); }
    int ShownImage() { return Windows().frame ? ImageAt(*Windows().frame, 0, 0) : -1; }
    // 0..6, or -1 when the frame has no mouth on it.
    int ShownMouth()
    {
        const int image = Windows().frame ? ImageAt(*Windows().frame, 3, 5) : -1;
        return image >= kFirstMouth ? image - kFirstMouth : -1;
    }
    std::vector<std::wstring> BalloonLinesShown()
    {
        return Windows().balloon ? Windows().balloon->lines : std::vector<std::wstring>{};
    }

    FakeStageView* view = nullptr;
    FakeSpeechEngine* engine = nullptr;
    RecordedEvents events;
    std::function<int(int)> chance;
    std::vector<std::wstring> animations;     // begun
    std::vector<std::wstring> frames;         // shown, as "Wave 0"
    std::unique_ptr<EmbeddedControl> control; // tells of its end, too: the last to come, the first to go
    Character* genie = nullptr;

private:
    void OnTrace(const TraceEvent& event)
    {
        if (event.event == "animation")
            animations.emplace_back(event.text);
        if (event.event == "frame")
            frames.push_back(std::wstring(event.text) + L" " + std::to_wstring(event.number));
    }
};

} // namespace voxtrel::agent::stage
