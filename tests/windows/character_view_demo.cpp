// Shows a character on the desktop, to be looked at by a person: the one of the .acs file that file:PATH
// names as the first argument, else a drawn one. Every other argument is one thing to do:
//   show hide stop        play:NAME   say:TEXT (silent, four words a second)
//   left:N top:N size:N   style:N     font:NAME points:N
//   wait:MS               quit
// Without quit it stays.

#include "agent/stage/embedded_control.h"
#include "agent/view/make_stage_view.h"
#include "tests/windows/drawn_character.h"
#include "tests/windows/silent_speech_engine.h"

#include <wx/app.h>
#include <wx/menu.h>
#include <wx/timer.h>

#include <cstdio>
#include <deque>
#include <random>
#include <string>

namespace voxtrel::agent {
namespace {

class DemoApp : public wxApp, private ControlEvents {
public:
    bool OnInit() override
    {
        for (int i = 1; i < argc; ++i)
            steps_.push_back(wxString(argv[i]).ToStdWstring());
        SetExitOnFrameDelete(false);
        std::setvbuf(stdout, nullptr, _IONBF, 0);

        stage::ControlParts parts;
        parts.engine = std::make_unique<SilentSpeechEngine>();
        parts.view = view::MakeStageView({[this](wxWindow& window, const wxPoint& at) {
            wxMenu menu;
            menu.Append(wxID_EXIT, "Quit");
            menu.Bind(wxEVT_MENU, [this](wxCommandEvent&) { ExitMainLoop(); });
            window.PopupMenu(&menu, at);
        }});
        parts.loadCharacter = [](std::wstring_view path) {
            return path.empty() ? acs::ReadOutcome{Result::Success(), DrawCharacter()}
                                : acs::LoadCharacterFile(path);
        };
        parts.balloonText = SilentBalloonText;
        parts.random = [generator = std::minstd_rand(7)](int bound) mutable {
            return std::uniform_int_distribution<int>(0, bound - 1)(generator);
        };
        parts.trace = [](const stage::TraceEvent& event) {
            std::printf("%s %s %lld\n", event.event.data(),
                        wxString(std::wstring(event.text)).utf8_str().data(),
                        static_cast<long long>(event.number));
        };
        control_ = std::make_unique<stage::EmbeddedControl>(std::move(parts));
        control_->SetEvents(this);
        std::wstring file;
        if (!steps_.empty() && steps_.front().starts_with(L"file:")) {
            file = steps_.front().substr(5);
            steps_.pop_front();
        }
        if (const Result loaded = control_->Load(L"demo", file); !loaded.Ok()) {
            std::printf("%ls\n", loaded.description.c_str());
            return false;
        }
        timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Step(); });
        timer_.StartOnce(1);
        return true;
    }

    int OnExit() override
    {
        control_.reset();
        return wxApp::OnExit();
    }

private:
    void Click(const PointerEvent& event) override
    {
        std::printf("click %d at %ld,%ld\n", event.button, event.x, event.y);
    }
    void DblClick(const PointerEvent&) override { std::puts("double click"); }
    void DragComplete(const PointerEvent& event) override
    {
        std::printf("dragged to %ld,%ld\n", event.x, event.y);
    }

    void Step()
    {
        while (!steps_.empty()) {
            const std::wstring step = steps_.front();
            steps_.pop_front();
            const std::size_t colon = step.find(L':');
            const std::wstring verb = step.substr(0, colon);
            const std::wstring rest = colon == std::wstring::npos ? L"" : step.substr(colon + 1);
            if (verb == L"wait")
                return (void)timer_.StartOnce(std::stoi(rest));
            if (verb == L"quit")
                return ExitMainLoop();
            Do(*control_->Find(L"demo"), verb, rest);
        }
    }

    static void Do(Character& character, const std::wstring& verb, const std::wstring& rest)
    {
        const long number = std::wcstol(rest.c_str(), nullptr, 10);
        if (verb == L"show")
            Ignore(character.Show());
        else if (verb == L"hide")
            Ignore(character.Hide());
        else if (verb == L"stop")
            Ignore(character.StopAll());
        else if (verb == L"play")
            Ignore(character.Play(rest));
        else if (verb == L"say")
            Ignore(character.Speak(rest));
        else if (verb == L"left")
            Ignore(character.SetLeft(number));
        else if (verb == L"top")
            Ignore(character.SetTop(number));
        else if (verb == L"size") {
            Ignore(character.SetWidth(number));
            Ignore(character.SetHeight(number));
        } else if (verb == L"style")
            Ignore(character.GetBalloon().SetStyle(static_cast<std::uint32_t>(number) |
                                                   (character.GetBalloon().Style() & 0xFFFF0000U)));
        else if (verb == L"font")
            Ignore(character.GetBalloon().SetFontName(rest));
        else if (verb == L"points")
            Ignore(character.GetBalloon().SetFontSize(number));
    }

    std::deque<std::wstring> steps_;
    wxTimer timer_;
    std::unique_ptr<stage::EmbeddedControl> control_;
};

} // namespace
} // namespace voxtrel::agent

wxIMPLEMENT_APP(voxtrel::agent::DemoApp);
