// The yardstick of start-up and idle costs: a wx frame and nothing else.

#include <wx/app.h>
#include <wx/frame.h>

class BareFrame final : public wxApp {
public:
    bool OnInit() override
    {
        auto* frame = new wxFrame(nullptr, wxID_ANY, "bare", wxPoint(100, 100), wxSize(128, 128), wxBORDER_NONE);
        return frame->Show();
    }
};

wxIMPLEMENT_APP(BareFrame);
