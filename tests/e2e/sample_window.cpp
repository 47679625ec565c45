// A window with one of each kind of control, for the tests that read the screen. Writes where its objects are
// and what they are to the file that is its argument, one JSON object a line, and stays open.

#include "platform/accessible_name.h"

#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/ffile.h>
#include <wx/filefn.h>
#include <wx/frame.h>
#include <wx/gauge.h>
#include <wx/hyperlink.h>
#include <wx/listbox.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/slider.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tglbtn.h>
#include <wx/timer.h>
#include <wx/toolbar.h>

#include <vector>

namespace {

constexpr int kSettleMs = 500; // until every control has its place

class SampleWindow final : public wxFrame {
public:
    explicit SampleWindow(const wxString& file)
        : wxFrame(nullptr, wxID_ANY, "Sample window", wxPoint(60, 60), wxSize(560, 620)), file_(file)
    {
        auto* menu = new wxMenu;
        menu->Append(wxID_ANY, "&New drawing");
        menu->AppendCheckItem(wxID_ANY, "&Grid")->Check(true);
        auto* bar = new wxMenuBar;
        bar->Append(menu, "&Drawing");
        SetMenuBar(bar);
        MakeToolBar();
        pages_ = new wxNotebook(this, wxID_ANY);
        MakeControls(new wxPanel(pages_));
        auto* empty = new wxPanel(pages_);
        pages_->AddPage(empty, "Colors");
        timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Write(); });
        timer_.StartOnce(kSettleMs);
    }

private:
    struct Object {
        wxString kind;
        wxString name;
        wxString value;
        wxWindow* control;
        wxPoint inside; // of the control's middle when it is (-1, -1)
    };

    template <class Control>
    Control* Add(Control* control, const wxString& kind, const wxString& name, const wxString& value = {})
    {
        objects_.push_back({kind, name, value, control, wxDefaultPosition});
        sizer_->Add(control, wxSizerFlags().Border(wxALL, 6));
        return control;
    }
    // The same for a control that shows no name of its own.
    template <class Control>
    void AddNamed(Control* control, const wxString& kind, const wxString& name, const wxString& value)
    {
        voxtrel::platform::SetAccessibleName(*control, name.ToStdWstring());
        Add(control, kind, name, value);
    }

    // A tool whose picture is explained by its tip, and one with a text.
    void MakeToolBar()
    {
        tools_ = CreateToolBar(wxTB_HORIZONTAL | wxTB_TEXT);
        const wxBitmap picture = wxArtProvider::GetBitmap(wxART_FILE_OPEN, wxART_TOOLBAR);
        tools_->AddTool(wxID_ANY, wxEmptyString, picture, "Draw a line");
        tools_->AddTool(wxID_ANY, "Open another drawing", picture);
        tools_->Realize();
    }

    void MakeControls(wxPanel* page)
    {
        sizer_ = new wxFlexGridSizer(3, 6, 6);
        Add(new wxButton(page, wxID_ANY, "&Save all"), "button", "Save all");
        Add(new wxStaticText(page, wxID_ANY, "Just a label"), "label", "Just a label");
        auto* box = Add(new wxCheckBox(page, wxID_ANY, "Bold"), "check box", "Bold", "checked");
        box->SetValue(true);
        Add(new wxCheckBox(page, wxID_ANY, "Italic"), "check box", "Italic", "not checked");
        auto* third =
            Add(new wxCheckBox(page, wxID_ANY, "Some", wxDefaultPosition, wxDefaultSize, wxCHK_3STATE),
                "check box", "Some", "partly checked");
        third->Set3StateValue(wxCHK_UNDETERMINED);
        auto* radio =
            Add(new wxRadioButton(page, wxID_ANY, "Portrait", wxDefaultPosition, wxDefaultSize, wxRB_GROUP),
                "radio button", "Portrait", "checked");
        radio->SetValue(true);
        Add(new wxRadioButton(page, wxID_ANY, "Landscape"), "radio button", "Landscape", "not checked");
        auto* toggle =
            Add(new wxToggleButton(page, wxID_ANY, "Record"), "toggle button", "Record", "pressed");
        toggle->SetValue(true);
        AddNamed(new wxTextCtrl(page, wxID_ANY, "Graz"), "text", "City", "Graz");
        AddNamed(new wxTextCtrl(page, wxID_ANY, "hunter2", wxDefaultPosition, wxDefaultSize, wxTE_PASSWORD),
                 "password text", "Secret", "");
        AddNamed(new wxSlider(page, wxID_ANY, 40, 0, 100, wxDefaultPosition, wxSize(120, -1)), "slider",
                 "Loudness", "40");
        AddNamed(new wxSpinCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                wxSP_ARROW_KEYS, 0, 100, 7),
                 "spin button", "Copies", "7");
        auto* gauge = new wxGauge(page, wxID_ANY, 100, wxDefaultPosition, wxSize(120, 24));
        gauge->SetValue(25);
        AddNamed(gauge, "progress bar", "Progress", "25%");
        const wxString colors[] = {"Red", "Green", "Blue"};
        auto* choice = new wxChoice(page, wxID_ANY, wxDefaultPosition, wxDefaultSize, 3, colors);
        choice->SetSelection(1);
        AddNamed(choice, "combo box", "Paint", "Green");
        list_ = new wxListBox(page, wxID_ANY, wxDefaultPosition, wxSize(120, 110), 3, colors);
        sizer_->Add(list_, wxSizerFlags().Border(wxALL, 6));
        Add(new wxHyperlinkCtrl(page, wxID_ANY, "More colors", "https://example.org/"), "link",
            "More colors");
        page->SetSizer(sizer_);
        pages_->AddPage(page, "Controls");
    }

    // A point of the list's item, or of the notebook's tab.
    template <class Control> wxPoint Find(Control& control, long item)
    {
        const wxSize size = control.GetSize();
        for (wxPoint at(12, 8); at.y < size.y; at.y += 4) {
            for (at.x = 12; at.x < size.x; at.x += 4) {
                if (control.HitTest(at) == item)
                    return at + wxPoint(4, 4);
            }
        }
        return {};
    }

    void Write()
    {
        const int middle = tools_->GetSize().y / 2;
        objects_.push_back({"tool", "Draw a line", "", tools_, wxPoint(12, middle)});
        objects_.push_back({"tool", "Open another drawing", "", tools_, wxPoint(200, middle)});
        objects_.push_back({"list item", "Blue", "", list_, Find(*list_, 2)});
        objects_.push_back({"page tab", "Colors", "", pages_, Find(*pages_, 1)});
        wxFFile file(file_ + ".part", "w");
        for (const Object& object : objects_) {
            const wxSize half = object.control->GetSize() / 2;
            const wxPoint at = object.control->ClientToScreen(
                object.inside == wxDefaultPosition ? wxPoint(half.x, half.y) : object.inside);
            file.Write(wxString::Format(R"({"kind": "%s", "name": "%s", "value": "%s", "x": %d, "y": %d})"
                                        "\n",
                                        object.kind, object.name, object.value, at.x, at.y));
        }
        file.Close();
        wxRenameFile(file_ + ".part", file_);
    }

    wxString file_;
    wxToolBar* tools_ = nullptr;
    wxNotebook* pages_;
    wxListBox* list_ = nullptr;
    wxFlexGridSizer* sizer_ = nullptr;
    std::vector<Object> objects_;
    wxTimer timer_;
};

class SampleApp final : public wxApp {
public:
    bool OnInit() override
    {
        if (argc != 2)
            return false;
        (new SampleWindow(argv[1]))->Show();
        return true;
    }
};

} // namespace

wxIMPLEMENT_APP(SampleApp);
