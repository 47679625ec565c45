#include "agent/stage/embedded_control.h"
#include "tests/agent/stage/stage_fakes.h"
#include "tests/agent/stage/test_character.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <random>
#include <utility>

// A day in the life of a character, by a clock of its own; every byte that is set aside is counted. The
// counting takes over the whole program, so this is a program of its own.

namespace {

std::atomic<std::ptrdiff_t> bytesInUse = 0;

constexpr std::size_t kHead = alignof(std::max_align_t); // before each piece: its size

void* Allocate(std::size_t size)
{
    auto* const start = static_cast<std::byte*>(std::malloc(size + kHead));
    if (start == nullptr)
        throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(start) = size;
    bytesInUse += static_cast<std::ptrdiff_t>(size);
    return start + kHead;
}

void Release(void* piece)
{
    if (piece == nullptr)
        return;
    auto* const start = static_cast<std::byte*>(piece) - kHead;
    bytesInUse -= static_cast<std::ptrdiff_t>(*reinterpret_cast<std::size_t*>(start));
    std::free(start);
}

} // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* piece) noexcept { Release(piece); }
void operator delete[](void* piece) noexcept { Release(piece); }
void operator delete(void* piece, std::size_t) noexcept { Release(piece); }
void operator delete[](void* piece, std::size_t) noexcept { Release(piece); }

namespace voxtrel::agent::stage {
namespace {

constexpr Time kHour{3'600'000};

class Day : public ::testing::Test {
protected:
    Day()
    {
        auto newView = std::make_unique<FakeStageView>();
        view_ = newView.get();
        ControlParts parts;
        parts.engine = std::make_unique<FakeSpeechEngine>(*newView);
        engine_ = static_cast<FakeSpeechEngine*>(parts.engine.get());
        parts.view = std::move(newView);
        parts.balloonText = FakeBalloonText;
        parts.random = [this](int bound) {
            return std::uniform_int_distribution<int>(0, bound - 1)(generator_);
        };
        parts.loadCharacter = [](std::wstring_view) -> acs::ReadOutcome {
            return {Result::Success(), MakeTestCharacter()};
        };
        control_ = std::make_unique<EmbeddedControl>(std::move(parts));
        control_->SetEvents(&events_);
        Ignore(control_->Load(L"genie", L"genie.acs"));
        genie_ = control_->Find(L"genie");
        Ignore(genie_->Show());
    }

    // Lets an hour pass; what the fakes wrote down is forgotten. Returns the bytes in use then.
    std::ptrdiff_t AnHourLater()
    {
        view_->RunUntil(view_->now + kHour);
        events_.lines.clear();
        events_.lines.shrink_to_fit();
        engine_->spoken.clear();
        engine_->spoken.shrink_to_fit();
        return bytesInUse;
    }

    std::minstd_rand generator_{7};
    FakeStageView* view_ = nullptr;
    FakeSpeechEngine* engine_ = nullptr;
    RecordedEvents events_;
    std::unique_ptr<EmbeddedControl> control_;
    Character* genie_ = nullptr;
};

TEST_F(Day, OfIdlingTakesNoMoreMemoryThanAnHour)
{
    const std::ptrdiff_t after = std::max(AnHourLater(), AnHourLater());
    for (int hour = 2; hour < 24; ++hour)
        EXPECT_LE(AnHourLater(), after + 1000) << "hour " << hour;
    EXPECT_GT(view_->windows.front()->framesShown, 1000) << "the character was asleep";
}

TEST_F(Day, OfSpeakingEachHourTakesNoMoreMemoryThanTwo)
{
    const auto hour = [this] {
        Ignore(genie_->Speak(L"one two three"));
        Ignore(genie_->Play(L"wave"));
        return AnHourLater();
    };
    const std::ptrdiff_t after = std::max(hour(), hour());
    for (int passed = 2; passed < 24; ++passed)
        EXPECT_LE(hour(), after + 1000) << "hour " << passed;
}

} // namespace
} // namespace voxtrel::agent::stage
