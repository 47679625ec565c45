#include "app/main_frame.h"

#include "app/main.h"
#include "platform/window_handle.h"
#include "settings/view/wx_form.h"

#include <wx/app.h>
#include <wx/bmpbndl.h>
#include <wx/display.h>
#include <wx/sizer.h>

namespace voxtrel::app {
namespace {

constexpr int kIconSizes[] = {16, 32, 48, 256};
constexpr int kCornerGap = 24; // device-independent pixels between the toolbar and the screen's corner

wxIconBundle LoadIcons(const wxString& file)
{
    wxIconBundle icons;
    const wxBitmapBundle drawing = wxBitmapBundle::FromSVGFile(file, wxSize(32, 32));
    if (!drawing.IsOk())
        return icons;
    for (const int size : kIconSizes)
        icons.AddIcon(drawing.GetIcon(wxSize(size, size)));
    return icons;
}

} // namespace

MainFrame::MainFrame(const std::wstring& iconFolder)
    : wxFrame(nullptr, wxID_ANY, "Voxtrel", wxDefaultPosition, wxDefaultSize,
              wxCAPTION | wxCLOSE_BOX | wxSYSTEM_MENU | wxSTAY_ON_TOP | wxFRAME_TOOL_WINDOW),
      timer1_(this), timer2_(this), hotkeytimer_(this)
{
    SetIcons(LoadIcons(wxString(iconFolder) + wxFILE_SEP_PATH + "voxtrel.svg"));
    tbrMenu_ = new Toolbar(this, iconFolder, [this](std::string_view key) {
        if (main_)
            main_->tbrMenu_ButtonClick(key);
    });
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(tbrMenu_, wxSizerFlags(1).Expand());
    SetSizerAndFit(sizer);
    PlaceAtCorner();

    if (wxTaskBarIcon::IsAvailable())
        sysTray_ = std::make_unique<wxTaskBarIcon>();
    settings::SetTag(*this, L"1000");

    Bind(wxEVT_TIMER, [this](wxTimerEvent&) { main_->Timer1_Timer(); }, timer1_.GetId());
    Bind(wxEVT_TIMER, [this](wxTimerEvent&) { main_->Timer2_Timer(); }, timer2_.GetId());
    Bind(wxEVT_TIMER, [this](wxTimerEvent&) { main_->hotkeytimer_Timer(); }, hotkeytimer_.GetId());
    Bind(wxEVT_CLOSE_WINDOW, &MainFrame::OnClose, this);
}

MainFrame::~MainFrame() { Attach(nullptr); }

void MainFrame::Attach(Main* main)
{
    main_ = main;
    for (wxTimer* timer : {&timer1_, &timer2_, &hotkeytimer_}) {
        if (main)
            timer->Start(kTickMs);
        else
            timer->Stop();
    }
}

platform::NativeWindow MainFrame::hWnd() const { return platform::WindowHandle(*this); }

void MainFrame::LocaliseForm(const settings::StringTable& table) { settings::LocaliseForm(*this, table); }

void MainFrame::SetInTray(bool shown)
{
    if (!sysTray_)
        return;
    if (shown)
        sysTray_->SetIcon(GetIcons().GetIcon(wxSize(32, 32)), GetTitle());
    else
        sysTray_->RemoveIcon();
}

void MainFrame::SetHelpFile(std::wstring_view path) { helpFile_ = path; }

void MainFrame::Show() { wxFrame::Show(true); }

void MainFrame::DoEvents() { wxTheApp->SafeYield(nullptr, false); }

void MainFrame::End()
{
    Attach(nullptr);
    sysTray_.reset();
    wxTheApp->ExitMainLoop();
}

void MainFrame::OnClose(wxCloseEvent&)
{
    if (main_)
        main_->Form_Unload();
}

void MainFrame::PlaceAtCorner()
{
    const wxRect area = wxDisplay(0u).GetClientArea();
    const int gap = FromDIP(kCornerGap);
    Move(area.GetRight() - GetSize().x - gap, area.GetTop() + gap);
}

} // namespace voxtrel::app
