// A tick of screen reading over the real settings file and a real server process: one that only sends back
// what it is sent, so that the bench says what lies under the pointer.

#include "platform/server_process.h"
#include "platform/settings_backend.h"
#include "screenreading/accessibility_control.h"
#include "screenreading/screen_reader.h"
#include "settings/setting_keys.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <thread>

namespace voxtrel {
namespace {

using namespace std::chrono_literals;
using platform::SwitchState;

class Desk {
public:
    Desk()
    {
        store_.SetApplicationName(settings::kApplicationName);
        shared.usescreenreading = true;
        access_.StartServer(L"/bin/cat");
        access_.StartMonitoring();
    }

    void PointAt(const platform::AccessibleObject& object)
    {
        server_->Write(screenreading::EncodeObject(object));
        while (access_.ObjectName() != object.name + L" ") {
            std::this_thread::sleep_for(1ms);
            access_.Poll();
        }
    }
    void Tick()
    {
        access_.Poll();
        reader_.Timer2_Timer();
    }

    settings::SharedSettings shared;

private:
    std::unique_ptr<settings::SettingsBackend> backend_ = platform::MakeSettingsBackend();
    settings::SettingsStore store_{*backend_};
    settings::StringTable strings_;
    std::unique_ptr<platform::ServerProcess> server_ = platform::MakeServerProcess();
    // The server never gives a sign of life by itself: to the control no time passes.
    screenreading::AccessibilityControl access_{*server_, strings_,
                                                [] { return std::chrono::steady_clock::time_point{}; }};
    screenreading::ScreenReader reader_{
        {store_, shared, access_,
         [] {
             const auto since = std::chrono::steady_clock::now().time_since_epoch();
             return static_cast<std::int32_t>(
                 std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
         },
         [](std::wstring_view) {}, [] {}, [](std::wstring_view, std::wstring_view) {}}};
};

void TickSwitchedOff(benchmark::State& state)
{
    Desk desk;
    desk.shared.usescreenreading = false;
    for (auto _ : state)
        desk.Tick();
}
BENCHMARK(TickSwitchedOff)->Unit(benchmark::kMicrosecond);

void TickOverTheSameObject(benchmark::State& state)
{
    Desk desk;
    desk.PointAt({L"Save all changes", L"push button", L"", SwitchState::None});
    desk.Tick();
    for (auto _ : state)
        desk.Tick();
}
BENCHMARK(TickOverTheSameObject)->Unit(benchmark::kMicrosecond);

// A long text below the pointer does not change either.
void TickOverTheSameLongText(benchmark::State& state)
{
    Desk desk;
    desk.PointAt({std::wstring(4000, L'x'), L"text", std::wstring(4000, L'y'), SwitchState::None});
    desk.Tick();
    for (auto _ : state)
        desk.Tick();
}
BENCHMARK(TickOverTheSameLongText)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace voxtrel

int main(int argc, char** argv)
{
    // The user's own settings are not for benchmarks.
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "voxtrel-screen-reading-bench";
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}
