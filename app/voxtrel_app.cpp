#include "app/voxtrel_app.h"

#include "agent/control_choice.h"
#include "agent/speech/speech_factory.h"
#include "agent/stage/embedded_control.h"
#include "agent/view/make_stage_view.h"
#include "app/headless.h"
#include "app/main.h"
#include "app/main_frame.h"
#include "app/message_boxes.h"
#include "app/program_rooms.h"
#include "app/traced_server_process.h"
#include "app/voice_commands.h"
#include "platform/command_channel.h"
#include "platform/console.h"
#include "platform/server_process.h"
#include "platform/settings_backend.h"
#include "platform/sound_drivers.h"
#include "screenreading/accessibility_control.h"
#include "settings/file_path.h"
#include "settings/program_folder.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"
#include "settings/string_table.h"

#include <wx/intl.h>
#include <wx/utils.h>

#include <utility>

namespace voxtrel::app {
namespace {

// wx makes the application object itself, so what main() knows reaches it this way.
CommandLine& TheCommandLine()
{
    static CommandLine line;
    return line;
}

int& TheExitCode()
{
    static int code = 0;
    return code;
}

// The command string that says the same, empty for a plain start.
std::wstring AsCommandString(const CommandLine& line)
{
    switch (line.mode) {
    case RunMode::Speak:
        return L"1:" + line.text;
    case RunMode::Read:
    case RunMode::ReadFile:
        return L"2:" + line.text;
    case RunMode::Options:
        return L"3:";
    case RunMode::Quit:
        return L"4:";
    case RunMode::Execute:
        return line.text;
    default:
        return {};
    }
}

bool NeedsRunningInstance(RunMode mode) { return mode == RunMode::Quit || mode == RunMode::Execute; }

settings::StringTable LoadStrings(const settings::ProgramFolder& folder)
{
    const wxString language = wxLocale::GetLanguageCanonicalName(wxLocale::GetSystemLanguage());
    settings::LoadedStringTable loaded =
        settings::LoadStringTable(folder.Beside(L"strings"), language.ToStdWstring());
    for (const std::wstring& problem : loaded.problems)
        platform::WriteError(problem + L"\n");
    return std::move(loaded.table);
}

} // namespace

// One of everything. Each line needs only what stands above it.
struct VoxtrelApp::House {
    explicit House(const std::wstring& folderPath)
        : folder(folderPath), strings(LoadStrings(folder)), backend(platform::MakeSettingsBackend()),
          store(*backend), desktop(platform::MakeDesktop()), server(platform::MakeServerProcess(), trace),
          access(server, strings), frame(new MainFrame(folder.Beside(L"icons"))), messages(frame),
          rooms({store, shared, strings, folder, *desktop, messages, access, trace},
                {.DoEvents = [this] { frame->DoEvents(); },
                 .SetLabel1 = [this](std::wstring_view caption) { frame->SetLabel1(caption); },
                 .HelpFile = [this] { return frame->HelpFile(); }})
    {
    }

    // The windows go while what they show is still there.
    ~House()
    {
        commands.reset();
        frame->Attach(nullptr);
        rooms.UnloadOptions();
        rooms.UnloadTextReader(); // it silences its character
        rooms.SetAgent(nullptr);
        agent1.reset();
        main.reset();
        frame->Destroy();
    }

    settings::ProgramFolder folder;
    settings::StringTable strings;
    std::unique_ptr<settings::SettingsBackend> backend;
    settings::SettingsStore store;
    settings::SharedSettings shared;
    std::unique_ptr<platform::Desktop> desktop;
    Trace trace;
    TracedServerProcess server;
    screenreading::AccessibilityControl access;
    MainFrame* frame; // destroyed by wx
    MessageBoxes messages;
    ProgramRooms rooms;
    std::unique_ptr<agent::Control> agent1;
    std::unique_ptr<Main> main;
    std::unique_ptr<platform::CommandServer> commands;
};

void VoxtrelApp::SetCommandLine(CommandLine commandLine) { TheCommandLine() = std::move(commandLine); }

VoxtrelApp::VoxtrelApp() = default;
VoxtrelApp::~VoxtrelApp() = default;

agent::stage::Trace VoxtrelApp::AgentTrace()
{
    if (!house_->trace.IsOpen())
        return {};
    return [&trace = house_->trace](const agent::stage::TraceEvent& event) {
        trace.Write(event.event, {{"text", event.text}, {"number", event.number}});
    };
}

// Our own character server with everything behind it. What it does goes to the trace; what is heard can be
// kept too, for tests and bug reports.
std::unique_ptr<agent::Control> VoxtrelApp::MakeEmbeddedAgent()
{
    platform::SilenceSoundDrivers();
    agent::speech::SpeechEngineOptions speech;
    speech.systemVoices = MakeSystemVoices();
    wxString record;
    if (wxGetEnv("VOXTREL_RECORD", &record))
        speech.record = settings::ToPath(record.ToStdWstring());
    agent::stage::StageOptions stage;
    stage.trace = AgentTrace();
    const auto menu = [frame = house_->frame](wxWindow&, const wxPoint&) { frame->PopupMenuOfCharacter(); };
    return agent::stage::MakeEmbeddedControl(agent::speech::MakeSpeechEngine(std::move(speech)),
                                             agent::view::MakeStageView({.menu = menu}), stage);
}

agent::MadeControl VoxtrelApp::MakeAgent()
{
    const auto later = [this](std::function<void()> work) { CallAfter(std::move(work)); };
    return agent::ChooseControl(
        TheCommandLine().characterServer,
        {.embedded = [this] { return MakeEmbeddedAgent(); },
         .systemIsRegistered = agent::SystemControlIsRegistered,
         .system = [this, later] { return agent::MakeSystemControl({.post = later, .trace = AgentTrace()}); },
         .chosen =
             [&trace = house_->trace](std::string_view server) {
                 trace.Write("character-server", {{"text", std::wstring(server.begin(), server.end())}});
             }});
}

bool VoxtrelApp::OnInit()
{
    SetAppName(wxString(kApplicationTitle.data()));
    SetExitOnFrameDelete(false);
    instances_ = platform::MakeSingleInstance();
    return !HandToRunningInstance() && OpenHouse();
}

// True when there is nothing left to do here; ExitCode says how it went.
bool VoxtrelApp::HandToRunningInstance()
{
    const CommandLine& line = TheCommandLine();
    if (line.mode == RunMode::Interactive)
        return false;
    if (instances_->AnotherIsRunning()) {
        if (!platform::SendCommand(AsCommandString(line))) {
            platform::WriteError(L"Voxtrel is running but does not answer.\n");
            TheExitCode() = kExitFailure;
        }
        return true;
    }
    if (NeedsRunningInstance(line.mode)) {
        platform::WriteError(L"Voxtrel is not running.\n");
        TheExitCode() = kExitFailure;
        return true;
    }
    return false;
}

bool VoxtrelApp::OpenHouse()
{
    const CommandLine& line = TheCommandLine();
    house_ = std::make_unique<House>(platform::ExecutableFolder());
    House& house = *house_;
    if (!line.traceFile.empty() && !house.trace.Open(line.traceFile)) {
        platform::WriteError(L"The trace file \"" + line.traceFile + L"\" cannot be written.\n");
        TheExitCode() = kExitUsage;
        return false;
    }
    agent::MadeControl agent = MakeAgent();
    if (!agent.control) {
        platform::WriteError(L"The character control of the system cannot be used: " +
                             agent.result.description + L"\n");
        TheExitCode() = kExitFailure;
        house_.reset();
        return false;
    }
    house.agent1 = std::move(agent.control);
    house.rooms.SetAgent(house.agent1.get());
    house.main = std::make_unique<Main>(
        MainServices{house.store, house.strings, house.shared, house.folder, *house.agent1, *house.desktop,
                     house.messages, house.access, *instances_, *house.frame, house.rooms, house.trace});
    switch (house.main->Form_Load()) {
    case Main::StartUp::SecondInstance:
        house_.reset();
        return false;
    case Main::StartUp::NoCharacter:
        house.messages.ShowExclamation(house.main->StartUpError());
        TheExitCode() = kExitFailure;
        house_.reset();
        return false;
    case Main::StartUp::Running:
        break;
    }
    house.frame->Attach(house.main.get());
    house.commands = platform::MakeCommandServer(
        [main = house.main.get()](std::wstring text) { main->Form_LinkExecute(text); });
    if (const std::wstring command = AsCommandString(line); !command.empty())
        house.main->Form_LinkExecute(command);
    return true;
}

int VoxtrelApp::OnExit()
{
    house_.reset();
    return wxApp::OnExit();
}

int VoxtrelApp::ExitCode() { return TheExitCode(); }

} // namespace voxtrel::app
