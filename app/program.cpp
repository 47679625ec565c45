#include "app/command_line.h"
#include "app/headless.h"
#include "app/voxtrel_app.h"
#include "platform/console.h"
#include "platform/toolkit.h"

#include <wx/app.h>
#include <wx/init.h>

#include <clocale>

wxIMPLEMENT_APP_NO_MAIN(voxtrel::app::VoxtrelApp);

int main(int argc, char** argv)
{
    using namespace voxtrel;

    app::ParsedCommandLine parsed = app::ParseCommandLine(platform::ProgramArguments(argc, argv));
    if (!parsed.error.empty()) {
        platform::WriteError(parsed.error + L"\nvoxtrel --help tells what can be asked for.\n");
        return app::kExitUsage;
    }
    if (app::IsHeadless(parsed.commandLine.mode))
        return app::RunHeadless(parsed.commandLine, platform::ExecutableFolder());
    app::CommandLine& line = parsed.commandLine;
    if (line.mode == app::RunMode::ReadFile && !app::LoadRequestedText(line, line.text))
        return app::kExitUsage;
    app::VoxtrelApp::SetCommandLine(std::move(line));
    platform::ChooseToolkitBackend();
    // Our options are no concern of wx and GTK.
    argc = 1;
    wxEntry(argc, argv);
    return app::VoxtrelApp::ExitCode();
}
