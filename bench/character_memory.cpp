// What a loaded character costs in memory: this program with an empty window, and with a character in its
// place that has been shown, has played every animation of its file and has spoken into its balloon.
// tests/with-display build/release/bench/character_memory: for each character of the build.

#include "agent/acs/reader.h"
#include "agent/stage/embedded_control.h"
#include "agent/view/desktop_stage_view.h"
#include "tests/windows/silent_speech_engine.h"

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/timer.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace voxtrel::agent {
namespace {

constexpr double kLimitMb = 20;
constexpr int kFaster = 10;          // than life
constexpr int kLongestPlayed = 8000; // milliseconds of the character's time; then it is stopped

// The desktop, with a clock that runs faster than the real one.
class FastView : public view::DesktopStageView {
public:
    FastView() : DesktopStageView({})
    {
        timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Beat(); });
    }
    stage::Time Now() const override { return DesktopStageView::Now() * kFaster; }
    void Drive(stage::Ticker* ticker) override
    {
        ticker_ = ticker;
        ticker != nullptr ? static_cast<void>(timer_.Start(5)) : timer_.Stop();
    }
    void Wake() override {}

private:
    void Beat()
    {
        if (ticker_ != nullptr && ticker_->NextTick() <= Now())
            ticker_->Tick();
    }

    stage::Ticker* ticker_ = nullptr;
    wxTimer timer_;
};

double ResidentMb()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        double kilobytes = 0;
        if (word == "VmRSS:" && status >> kilobytes)
            return kilobytes / 1024;
    }
    return 0;
}

// A window like the character's, with nothing in it.
class EmptyWindow : public view::ShapedWindow {
public:
    EmptyWindow() : ShapedWindow("empty") { SetSize(400, 400, 128, 128); }
};

constexpr const char* kEmpty = "--empty";

// The program that is measured: prints its resident memory with the window just shown and, for a character,
// at the end of all that it can do.
class MeasuredApp : public wxApp, private ControlEvents {
public:
    bool OnInit() override
    {
        SetExitOnFrameDelete(false);
        if (argv[1] != kEmpty) {
            tooLong_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Ignore(Shown().StopAll()); });
            return LoadCharacter(argv[1].ToStdWstring());
        }
        (new EmptyWindow)->ShowWithoutActivating();
        tooLong_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Finish(); });
        tooLong_.StartOnce(1000);
        return true;
    }

    int OnExit() override
    {
        control_.reset();
        return wxApp::OnExit();
    }

private:
    Character& Shown() { return *control_->Find(L"character"); }

    bool LoadCharacter(const std::wstring& path)
    {
        stage::ControlParts parts;
        parts.engine = std::make_unique<SilentSpeechEngine>();
        parts.view = std::make_unique<FastView>();
        parts.loadCharacter = [this](std::wstring_view file) {
            acs::ReadOutcome read = acs::LoadCharacterFile(file);
            for (const acs::Animation& animation : read.character.animations)
                animations_.push_back(animation.name);
            return read;
        };
        parts.balloonText = SilentBalloonText;
        parts.random = [generator = std::minstd_rand(7)](int bound) mutable {
            return std::uniform_int_distribution<int>(0, bound - 1)(generator);
        };
        control_ = std::make_unique<stage::EmbeddedControl>(std::move(parts));
        control_->SetEvents(this);
        if (const Result loaded = control_->Load(L"character", path); !loaded.Ok()) {
            std::fprintf(stderr, "%ls\n", loaded.description.c_str());
            return false;
        }
        Ignore(Shown().SetLeft(400));
        Ignore(Shown().SetTop(400));
        Ignore(Shown().Show());
        return true;
    }

    void RequestComplete(std::wstring_view, const Result&) override { CallAfter(&MeasuredApp::Next); }

    void Next()
    {
        if (next_ == 0)
            std::printf("%.1f ", ResidentMb());
        if (next_ < animations_.size()) {
            Ignore(Shown().Play(animations_[next_]));
            tooLong_.StartOnce(kLongestPlayed / kFaster);
        } else if (next_ == animations_.size()) {
            Ignore(Shown().Speak(L"When the rain had stopped they walked back to town and it was late"));
            tooLong_.Stop();
        } else {
            return Finish();
        }
        ++next_;
    }

    void Finish()
    {
        std::printf("%.1f\n", ResidentMb());
        ExitMainLoop();
    }

    wxTimer tooLong_;
    std::unique_ptr<stage::EmbeddedControl> control_;
    std::vector<std::wstring> animations_;
    std::size_t next_ = 0;
};

// What the measured program prints for one argument.
std::array<double, 2> Measure(const std::string& self, const std::string& argument)
{
    std::array<double, 2> megabytes{};
    FILE* const pipe = popen(("'" + self + "' '" + argument + "'").c_str(), "r");
    if (pipe == nullptr)
        return megabytes;
    if (std::fscanf(pipe, "%lf", &megabytes[0]) == 1 && std::fscanf(pipe, "%lf", &megabytes[1]) != 1)
        megabytes[1] = megabytes[0];
    pclose(pipe);
    return megabytes;
}

int CompareWithEmptyWindow(const std::string& self)
{
    // The first program on a display looks for OpenGL, whose library stays in its memory; the toolkit notes
    // the answer for those that follow.
    Measure(self, kEmpty);
    const double empty = Measure(self, kEmpty)[0];
    std::printf("empty window: %.1f MB\n", empty);
    bool kept = empty > 0;
    for (const auto& entry : std::filesystem::directory_iterator(VOXTREL_CHARACTERS)) {
        const auto [shown, played] = Measure(self, entry.path().string());
        kept = kept && shown > 0 && played - empty <= kLimitMb;
        std::printf("%s: %+.1f MB shown, %+.1f MB when all its animations were played and it has spoken\n",
                    entry.path().stem().c_str(), shown - empty, played - empty);
    }
    std::printf("limit: %+.0f MB: %s\n", kLimitMb, kept ? "kept" : "MISSED");
    return kept ? 0 : 1;
}

} // namespace
} // namespace voxtrel::agent

wxIMPLEMENT_APP_NO_MAIN(voxtrel::agent::MeasuredApp);

int main(int argc, char** argv)
{
    return argc < 2 ? voxtrel::agent::CompareWithEmptyWindow(argv[0]) : wxEntry(argc, argv);
}
