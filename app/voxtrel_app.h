#pragma once

#include "agent/control_choice.h"
#include "agent/stage/trace.h"
#include "app/command_line.h"
#include "platform/single_instance.h"

#include <wx/app.h>

#include <memory>

namespace voxtrel::app {

// Makes one of everything, hands each room what it needs, and carries out the command line.
class VoxtrelApp final : public wxApp {
public:
    VoxtrelApp();
    ~VoxtrelApp() override;

    // Must be called before wx starts.
    static void SetCommandLine(CommandLine commandLine);

    bool OnInit() override;
    int OnExit() override;

    // How the program ends; meaningful when start-up ended it early.
    static int ExitCode();

private:
    struct House;

    bool HandToRunningInstance();
    bool OpenHouse();
    agent::stage::Trace AgentTrace();
    std::unique_ptr<agent::Control> MakeEmbeddedAgent();
    agent::MadeControl MakeAgent();

    std::unique_ptr<platform::SingleInstance> instances_;
    std::unique_ptr<House> house_;
};

} // namespace voxtrel::app

wxDECLARE_APP(voxtrel::app::VoxtrelApp);
