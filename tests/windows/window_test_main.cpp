// Runs the tests of a program from within a wx application, so that they can open windows. Events are handled
// when a test asks for it (wxYield, or a modal loop of the window under test).

#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/evtloop.h>

namespace {

class WindowTestApp : public wxApp {
public:
    bool OnInit() override { return true; }

    int OnRun() override
    {
        wxEventLoop loop;
        const wxEventLoopActivator active(&loop);
        return RUN_ALL_TESTS();
    }
};

} // namespace

wxIMPLEMENT_APP_NO_MAIN(WindowTestApp);

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    return wxEntry(argc, argv);
}
