// One tick of the general timer as far as hot keys go: the window in front is looked up and five keys are
// polled, on the display that is there. Prints the median time of a tick, most of which is spent waiting for
// the server that keeps windows and keys, and the processor time of this program alone; beside them one
// question to that server.
//
//   hot_key_bench [TICKS]
//
// For Windows: cmake --preset windows -DVOXTREL_BENCH=ON.

#include "hotkeys/hot_key_poll.h"
#include "hotkeys/selection.h"
#include "platform/selection_ports.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using namespace voxtrel;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

struct Cost {
    double medianUs = 0;
    double ownUs = 0; // processor time of this process
};

// Elsewhere it counts real time, in milliseconds.
constexpr bool kClockIsProcessorTime = CLOCKS_PER_SEC == 1'000'000;

void Print(const char* what, int times, const Cost& cost)
{
    std::printf("%s, median of %d: %.1f us", what, times, cost.medianUs);
    if (kClockIsProcessorTime)
        std::printf(", own processor time %.1f us", cost.ownUs);
    std::printf("\n");
}

template <typename Work> Cost Measure(int times, Work work)
{
    std::vector<double> took;
    std::clock_t own = 0;
    for (int i = 0; i < times; ++i) {
        // Real ticks are far enough apart that nothing of the last one is remembered.
        std::this_thread::sleep_for(2ms);
        const std::clock_t ownBegin = std::clock();
        const auto begin = Clock::now();
        work();
        took.push_back(std::chrono::duration<double, std::micro>(Clock::now() - begin).count());
        own += std::clock() - ownBegin;
    }
    const auto middle = took.begin() + static_cast<std::ptrdiff_t>(took.size() / 2);
    std::nth_element(took.begin(), middle, took.end());
    return {*middle, 1e6 * static_cast<double>(own) / CLOCKS_PER_SEC / times};
}

} // namespace

int main(int argc, char** argv)
{
    const int ticks = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000;
    platform::SelectionPorts ports = platform::MakeSelectionPorts();
    if (ports.reach == platform::DesktopReach::Nothing) {
        std::fprintf(stderr, "no display\n");
        return 1;
    }
    hotkeys::Selection selection({*ports.windows, *ports.clipboard, *ports.keystrokes, [] {},
                                  [](std::wstring) {}, [](std::wstring) {}, [] {},
                                  [](platform::NativeWindow, std::wstring_view) {}});
    hotkeys::HotKeyTable table;
    const Cost tick = Measure(ticks, [&] {
        selection.UpdateTargetWindow();
        hotkeys::PollHotKeys(table, *ports.keyboard, selection);
    });
    const Cost question = Measure(ticks, [&] { ports.windows->GetForegroundWindow(); });
    Print("tick (limit of the own time: 50 us)", ticks, tick);
    Print("asking for the window in front", ticks, question);
}
