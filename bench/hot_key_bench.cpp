// One tick of the general timer as far as hot keys go: the window in front is looked up and five keys are polled, on
// the display that is there. own_us is the processor time of this program; the rest of Time is spent waiting for the
// display's server.

#include "hotkeys/hot_key_poll.h"
#include "hotkeys/selection.h"
#include "platform/selection_ports.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>
#include <string>
#include <string_view>
#include <thread>

namespace voxtrel {
namespace {

using namespace std::chrono_literals;

void TimerTick(benchmark::State& state)
{
    platform::SelectionPorts ports = platform::MakeSelectionPorts();
    if (ports.reach == platform::DesktopReach::Nothing) {
        state.SkipWithError("no display");
        return;
    }
    hotkeys::Selection selection({*ports.windows, *ports.clipboard, *ports.keystrokes, [] {},
                                  [](std::wstring) {}, [](std::wstring) {}, [] {},
                                  [](platform::NativeWindow, std::wstring_view) {}});
    hotkeys::HotKeyTable table;
    std::clock_t own = 0;
    for (auto _ : state) {
        // Real ticks are far enough apart that nothing of the last one is remembered.
        std::this_thread::sleep_for(2ms);
        const std::clock_t ownBegin = std::clock();
        const auto begin = std::chrono::steady_clock::now();
        selection.UpdateTargetWindow();
        hotkeys::PollHotKeys(table, *ports.keyboard, selection);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        own += std::clock() - ownBegin;
    }
    const double ownMicroseconds = 1e6 * static_cast<double>(own) / CLOCKS_PER_SEC;
    state.counters["own_us"] = benchmark::Counter(ownMicroseconds, benchmark::Counter::kAvgIterations);
}
BENCHMARK(TimerTick)->Unit(benchmark::kMicrosecond)->UseManualTime()->Iterations(1000);

} // namespace
} // namespace voxtrel
